#pragma once

#include "ui/controls/Pressable.h"
#include "ui/look/TextStyle.h"

namespace quorbit {

class ProgressIndicator;

enum class ButtonKind {
    prominent,            ///< the action that a view is about, in the accent colour
    bordered,             ///< any other action
    destructive,          ///< bordered, for what cannot be undone
    destructiveProminent, ///< the same where it is the question asked
    destructiveCaption    ///< without a border, in caption style, for headers
};
enum class ButtonSize { regular, small };

/// A push button with a text and perhaps a symbol before it.
class Button final : public Pressable {
    Q_OBJECT

public:
    explicit Button(const QString &label = {}, ButtonKind kind = ButtonKind::bordered,
                    ButtonSize size = ButtonSize::regular, QWidget *parent = nullptr);

    QString label() const { return label_; }
    void setSymbol(const QString &name);
    /// Shows a progress indicator in place of the label. The button keeps its size; disabling it is the
    /// owner's choice.
    void setBusy(bool busy);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    QString accessibleFallbackName() const override { return label_; }
    void addAccessibleState(QAccessible::State &state) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QFont ownFont() const;
    int symbolWidth() const;
    bool isFilled() const;

    QString label_;
    QString symbol_;
    ButtonKind kind_;
    ButtonSize size_;
    ProgressIndicator *busy_ = nullptr;
};

} // namespace quorbit
