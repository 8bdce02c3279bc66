#pragma once

#include "settings/kvm/KvmModel.h"

#include <QWidget>

namespace quorbit {

class SymbolLabel;
class TextLabel;

/// Whether the service may drive keyboard and pointer, with buttons to allow it while it may not.
class AccessibilityRow final : public QWidget {
    Q_OBJECT

public:
    explicit AccessibilityRow(QWidget *parent = nullptr);

    void render(const KvmModel::Accessibility &model);

Q_SIGNALS:
    void grantRequested();
    void restartRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    QWidget *makeButtons();
    void keepHeight();

    KvmModel::Accessibility shown_;
    SymbolLabel *symbol_;
    TextLabel *title_;
    TextLabel *description_;
    QWidget *buttons_;
};

} // namespace quorbit
