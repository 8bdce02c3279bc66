#include "ui/look/Symbol.h"

#include "ui/look/SymbolList.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <span>

namespace quorbit {

namespace {

// The glyphs are drawn on a grid of 24 units.
constexpr double grid = 24;

/// Made of the font when the program is built. Opening the font here would open the system's fonts with it,
/// for the tray icon alone.
struct Element {
    QPainterPath::ElementType type;
    float x;
    float y;
};
struct Outline {
    char32_t codePoint;
    std::span<const Element> elements;
};
#include "SymbolOutlines.inc" // `outlines`

/// In a square of one unit, from its top left.
QPainterPath outline(QStringView name) {
    const auto symbol = std::ranges::find_if(symbols, [&](const Symbol &each) { return each.name == name; });
    const char32_t codePoint = symbol == symbols.end() ? unknownSymbol : symbol->codePoint;
    const auto *found = std::ranges::find(outlines, codePoint, &Outline::codePoint);
    QPainterPath path;
    const auto point = [](const Element &element) { return QPointF(element.x, element.y); };
    const auto &elements = found->elements;
    for (std::size_t at = 0; at < elements.size(); ++at) {
        if (elements[at].type == QPainterPath::MoveToElement) {
            path.moveTo(point(elements[at]));
        } else if (elements[at].type == QPainterPath::LineToElement) {
            path.lineTo(point(elements[at]));
        } else {
            path.cubicTo(point(elements[at]), point(elements[at + 1]), point(elements[at + 2]));
            at += 2;
        }
    }
    return path;
}

/// White inside a dark line: one of the two stands out from whatever is behind.
class OutlinedIconEngine final : public QIconEngine {
public:
    explicit OutlinedIconEngine(QString name) : name_(std::move(name)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State) override {
        const double side = std::min(rect.width(), rect.height());
        // In a small icon the white would be left to half-covered pixels, so it is made bolder.
        const double bolder = std::max(0.0, boldness * (1 - side / grid));
        const double line = bolder + std::max(side * outlineWidth, leastOutline);
        QTransform place;
        place.translate(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
        place.scale(side, side);
        const QPainterPath shape = place.map(outline(name_));
        const auto stroke = [&](const QColor &color, double reach) {
            painter->strokePath(shape, QPen(color, 2 * reach, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        };
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        stroke(outlineColor, line);
        if (bolder > 0)
            stroke(Qt::white, bolder);
        painter->restore();
        paintSymbol(*painter, rect, name_, Qt::white);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    // A tray host is sent the icon in each size listed here.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {44, 44}, {48, 48}, {64, 64}, {96, 96}};
    }

    QIconEngine *clone() const override { return new OutlinedIconEngine(*this); }
    bool isNull() override { return false; }

private:
    QString name_;
    static constexpr QColor outlineColor{0, 0, 0};
    static constexpr double outlineWidth = 1 / grid;
    static constexpr double boldness = 1;       // pixels
    static constexpr double leastOutline = 0.9; // pixels; less would vanish among the half-covered ones
};

} // namespace

void paintSymbol(QPainter &painter, const QRectF &rect, QStringView name, const QColor &color) {
    const double side = std::min(rect.width(), rect.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.center().x() - side / 2, rect.center().y() - side / 2);
    painter.scale(side, side);
    painter.fillPath(outline(name), color);
    painter.restore();
}

QIcon outlinedSymbolIcon(const QString &name) {
    return QIcon(new OutlinedIconEngine(name));
}

QStringList symbolNames() {
    QStringList names;
    for (const Symbol &symbol : symbols)
        names << symbol.name;
    return names;
}

} // namespace quorbit
