#pragma once

#include <QProxyStyle>

namespace quorbit {

/// The application's style, to be set with QApplication::setStyle. Its SH_Widget_Animation_Duration is 0
/// while motion is reduced, from which every control learns it, and it draws the menus and scroll bars of
/// Qt's own widgets.
class ControlStyle final : public QProxyStyle {
    Q_OBJECT

public:
    ControlStyle();

    void setReducedMotion(bool reduced) { reducedMotion_ = reduced; }

    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *result = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                    const QWidget *widget = nullptr) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;

private:
    bool reducedMotion_ = false;
};

/// How long a change of `widget` may take to be seen, in milliseconds: 0 when motion is reduced or nobody can
/// see it.
int animationDuration(const QWidget &widget);

/// Makes what `painter` paints of a disabled widget paler.
void dimIfDisabled(QPainter &painter, const QWidget &widget);

} // namespace quorbit
