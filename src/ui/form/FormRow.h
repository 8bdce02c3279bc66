#pragma once

#include <QList>

#include <QWidget>

class QHBoxLayout;

namespace quorbit {

class SymbolLabel;
class TextLabel;

/// A row of a form: a label at its leading edge and a control at its trailing edge. The control is named
/// after the label for screen readers, unless it has a name.
class FormRow final : public QWidget {
    Q_OBJECT

public:
    FormRow(const QString &label, QWidget *control, QWidget *parent = nullptr);
    /// A row that `content` fills.
    explicit FormRow(QWidget *content, QWidget *parent = nullptr);

    void setLabel(const QString &label);
    /// A symbol before the label; empty for none.
    void setSymbol(const QString &name);
    /// Adds another control behind the last one.
    void addControl(QWidget *control);

protected:
    void changeEvent(QEvent *event) override;

private:
    FormRow(TextLabel *label, QWidget *control, QWidget *parent);
    void updateMinimum();

    QHBoxLayout *row_;
    SymbolLabel *symbol_ = nullptr;
    TextLabel *label_ = nullptr;
    QList<QWidget *> controls_;
};

} // namespace quorbit
