#include "ui/look/SymbolList.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <QRawFont>
#include <QSaveFile>
#include <QTextStream>

#include <set>

/// Writes the outlines of the symbols as C++: symbol_outlines FONT OUTPUT. They lie in a square of one unit,
/// from its top left.

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

constexpr std::array types{"MoveToElement", "LineToElement", "CurveToElement", "CurveToDataElement"};

QPainterPath outline(const QRawFont &font, char32_t codePoint) {
    const auto glyphs = font.glyphIndexesForString(QString::fromUcs4(&codePoint, 1));
    const QPainterPath path = glyphs.isEmpty() ? QPainterPath() : font.pathForGlyph(glyphs.first());
    if (path.isEmpty() || path.fillRule() != Qt::OddEvenFill)
        qFatal("no outline of %x", static_cast<unsigned>(codePoint));
    QTransform toUnit;
    toUnit.scale(1 / font.pixelSize(), 1 / font.pixelSize());
    toUnit.translate(0, font.pixelSize());
    return toUnit.map(path);
}

void write(QTextStream &text, const QPainterPath &path, char32_t codePoint) {
    text << "constexpr Element outline" << static_cast<unsigned>(codePoint) << "[] = {\n";
    for (int index = 0; index < path.elementCount(); ++index) {
        const QPainterPath::Element element = path.elementAt(index);
        text << "    {QPainterPath::" << types.at(element.type) << ", " << element.x << "F, " << element.y
             << "F},\n";
    }
    text << "};\n";
}

} // namespace

int main(int argc, char **argv) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    // Hinting would bend outlines that are scaled to every size.
    const QRawFont font(arguments.value(1), 960, QFont::PreferNoHinting);
    QSaveFile file(arguments.value(2));
    if (!font.isValid() || !file.open(QSaveFile::WriteOnly))
        qFatal("usage: symbol_outlines FONT OUTPUT");

    std::set<char32_t> codePoints{unknownSymbol};
    for (const Symbol &symbol : symbols)
        codePoints.insert(symbol.codePoint);
    QTextStream text(&file);
    text.setRealNumberNotation(QTextStream::FixedNotation);
    text.setRealNumberPrecision(7);
    for (const char32_t codePoint : codePoints)
        write(text, outline(font, codePoint), codePoint);
    text << "constexpr Outline outlines[] = {\n";
    for (const char32_t codePoint : codePoints)
        text << "    {" << static_cast<unsigned>(codePoint) << ", outline" << static_cast<unsigned>(codePoint)
             << "},\n";
    text << "};\n";
    text.flush();
    return file.flush() && file.commit() ? 0 : 1; // commit() alone does not see a full disk
}
