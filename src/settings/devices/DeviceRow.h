#pragma once

#include "settings/devices/DevicesModel.h"

#include <QWidget>

class QBoxLayout;

namespace quorbit {

class Button;
class SelectableText;
class SymbolLabel;
class TextLabel;

/// A paired computer, with a button that asks for its removal.
class DeviceRow final : public QWidget {
    Q_OBJECT

public:
    explicit DeviceRow(const DevicesModel::Row &model, QWidget *parent = nullptr);

    QString deviceId() const { return shown_.deviceId; }
    bool isFor(const DevicesModel::Row &model) const { return shown_.deviceId == model.deviceId; }
    void render(const DevicesModel::Row &model);
    /// For the order in which the Tab key visits the rows.
    QWidget *firstFocusStop() const;
    QWidget *lastFocusStop() const;

Q_SIGNALS:
    void removeRequested();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fill(const DevicesModel::Row &model);
    void arrange();

    DevicesModel::Row shown_;
    SymbolLabel *symbol_;
    TextLabel *name_;
    TextLabel *badge_;
    QBoxLayout *title_;
    SelectableText *fingerprint_;
    Button *remove_;
};

} // namespace quorbit
