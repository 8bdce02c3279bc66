#include "ui/Symbol.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>
#include <QResource>

#include <algorithm>
#include <array>
#include <unordered_map>

// A resource in a static library is only linked in when its initialiser is named, outside any namespace.
static void initSymbolFont() {
    Q_INIT_RESOURCE(symbols);
}

namespace quorbit {

namespace {

struct Symbol {
    QLatin1String name;
    char32_t codePoint;
};

// Where the font has no filled or outlined sister of a glyph, two names share one.
constexpr std::array symbols{
    Symbol{QLatin1String("antenna.radiowaves.left.and.right"), 0xe51e},
    Symbol{QLatin1String("arrow.clockwise.circle.fill"), 0xf053},
    Symbol{QLatin1String("arrow.down.circle"), 0xf181},
    Symbol{QLatin1String("arrow.down.circle.fill"), 0xf181},
    Symbol{QLatin1String("arrow.triangle.2.circlepath"), 0xe627},
    Symbol{QLatin1String("arrow.up.circle"), 0xf182},
    Symbol{QLatin1String("arrow.uturn.left"), 0xe166},
    Symbol{QLatin1String("checkmark"), 0xe5ca},
    Symbol{QLatin1String("checkmark.circle.fill"), 0xe86c},
    Symbol{QLatin1String("checkmark.shield.fill"), 0xe8e8},
    Symbol{QLatin1String("chevron.down"), 0xe5cf},
    Symbol{QLatin1String("chevron.up"), 0xe5ce},
    Symbol{QLatin1String("chevron.up.chevron.down"), 0xe5d7},
    Symbol{QLatin1String("clock"), 0xe8b5},
    Symbol{QLatin1String("command"), 0xeae7},
    Symbol{QLatin1String("computermouse.fill"), 0xe323},
    Symbol{QLatin1String("cursorarrow.and.square.on.square.dashed"), 0xef52},
    Symbol{QLatin1String("cursorarrow.motionlines"), 0xe323},
    Symbol{QLatin1String("cursorarrow.rays"), 0xe762},
    Symbol{QLatin1String("display"), 0xef5b},
    Symbol{QLatin1String("doc"), 0xe24d},
    Symbol{QLatin1String("doc.on.doc"), 0xe173},
    Symbol{QLatin1String("ellipsis.circle.fill"), 0xef64},
    Symbol{QLatin1String("exclamationmark.circle.fill"), 0xe000},
    Symbol{QLatin1String("exclamationmark.shield.fill"), 0xf014},
    Symbol{QLatin1String("exclamationmark.triangle.fill"), 0xe002},
    Symbol{QLatin1String("hand.draw"), 0xe925},
    Symbol{QLatin1String("info.circle"), 0xe88e},
    Symbol{QLatin1String("keyboard"), 0xe312},
    Symbol{QLatin1String("keyboard.fill"), 0xe312},
    Symbol{QLatin1String("laptopcomputer"), 0xe31e},
    Symbol{QLatin1String("laptopcomputer.and.iphone"), 0xe1b1},
    Symbol{QLatin1String("laptopcomputer.slash"), 0xe99d},
    Symbol{QLatin1String("lock"), 0xe897},
    Symbol{QLatin1String("macbook"), 0xe320},
    Symbol{QLatin1String("magnifyingglass.circle"), 0xe2db},
    Symbol{QLatin1String("pause.circle"), 0xe036},
    Symbol{QLatin1String("pause.circle.fill"), 0xe035},
    Symbol{QLatin1String("pc"), 0xe30c},
    Symbol{QLatin1String("person.badge.plus"), 0xe7fe},
    Symbol{QLatin1String("photo"), 0xe410},
    Symbol{QLatin1String("plus"), 0xe145},
    Symbol{QLatin1String("questionmark.circle"), 0xe8fd},
    Symbol{QLatin1String("rectangle.connected.to.line.below"), 0xe308},
    Symbol{QLatin1String("sparkles"), 0xe65f},
    Symbol{QLatin1String("text.alignleft"), 0xe26c},
    Symbol{QLatin1String("wifi.exclamationmark"), 0xf066},
    Symbol{QLatin1String("xmark.circle"), 0xe888},
};
constexpr char32_t unknownSymbol = 0xe836;
// The glyphs are drawn on a grid of 24 units.
constexpr double grid = 24;

using Outlines = std::unordered_map<char32_t, QPainterPath>;

/// The outlines of all symbols, from the top left of a square of one unit. The font is let go at once: a few
/// dozen outlines are smaller than an open font, and they outlive the application object safely.
Outlines loadOutlines() {
    initSymbolFont();
    const QResource file(QStringLiteral(":/quorbit/symbols.ttf"));
    QRawFont font;
    // Hinting would bend outlines that are scaled to every size.
    font.loadFromData(file.uncompressedData(), grid * 40, QFont::PreferNoHinting);
    Outlines outlines;
    const auto add = [&](char32_t codePoint) {
        const auto glyphs = font.glyphIndexesForString(QString::fromUcs4(&codePoint, 1));
        if (glyphs.isEmpty())
            return;
        QTransform toUnit;
        toUnit.scale(1 / font.pixelSize(), 1 / font.pixelSize());
        toUnit.translate(0, font.pixelSize());
        outlines.insert_or_assign(codePoint, toUnit.map(font.pathForGlyph(glyphs.first())));
    };
    for (const Symbol &symbol : symbols)
        add(symbol.codePoint);
    add(unknownSymbol);
    return outlines;
}

const QPainterPath &outline(QStringView name) {
    static const Outlines outlines = loadOutlines();
    static const QPainterPath nothing;
    const auto *symbol = std::find_if(symbols.begin(), symbols.end(),
                                      [name](const Symbol &candidate) { return candidate.name == name; });
    const auto found = outlines.find(symbol == symbols.end() ? unknownSymbol : symbol->codePoint);
    return found == outlines.end() ? nothing : found->second;
}

class SymbolIconEngine : public QIconEngine {
public:
    SymbolIconEngine(QString name, QColor color, QColor disabled)
        : name_(std::move(name)), color_(color), disabled_(disabled) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override {
        paintSymbol(*painter, rect, name_,
                    mode == QIcon::Disabled && disabled_.isValid() ? disabled_ : color_);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new SymbolIconEngine(*this); }
    bool isNull() override { return false; }

protected:
    const QString &name() const { return name_; }

private:
    QString name_;
    QColor color_;
    QColor disabled_;
};

/// White inside a dark line: one of the two stands out from whatever is behind.
class OutlinedIconEngine final : public SymbolIconEngine {
public:
    explicit OutlinedIconEngine(const QString &name) : SymbolIconEngine(name, Qt::white, {}) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override {
        const double side = std::min(rect.width(), rect.height());
        // In a small icon the white would be left to half-covered pixels, so it is made bolder.
        const double bolder = std::max(0.0, boldness * (1 - side / grid));
        const double line = bolder + std::max(side * outlineWidth, leastOutline);
        QTransform place;
        place.translate(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
        place.scale(side, side);
        const QPainterPath shape = place.map(outline(name()));
        const auto stroke = [&](const QColor &color, double reach) {
            painter->strokePath(shape, QPen(color, 2 * reach, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        };
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        stroke(outlineColor, line);
        if (bolder > 0)
            stroke(Qt::white, bolder);
        painter->restore();
        SymbolIconEngine::paint(painter, rect, mode, state);
    }

    // A tray host is sent the icon in each size listed here.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {44, 44}, {48, 48}, {64, 64}, {96, 96}};
    }

    QIconEngine *clone() const override { return new OutlinedIconEngine(*this); }

private:
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

QIcon symbolIcon(const QString &name, const QColor &color, const QColor &disabled) {
    return QIcon(new SymbolIconEngine(name, color, disabled));
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
