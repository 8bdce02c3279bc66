#pragma once

#include <QLatin1String>

#include <array>

namespace quorbit {

/// A symbol's name, and the code point of its glyph in the font.
struct Symbol {
    QLatin1String name;
    char32_t codePoint;
};

// Where the font has no filled or outlined sister of a glyph, two names share one.
inline constexpr std::array symbols{
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
/// Stands for every name that is not in the list.
inline constexpr char32_t unknownSymbol = 0xe836;

} // namespace quorbit
