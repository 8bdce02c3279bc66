#include "wording/TextRules.h"

#include <QCoreApplication>
#include <QList>

#include <algorithm>
#include <memory>

#include <unicode/ubrk.h>
#include <unicode/uchar.h>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

bool isHorizontalSpace(QChar c) {
    return c == u'\t' || c.category() == QChar::Separator_Space;
}

bool isVisible(char32_t character) {
    constexpr char32_t brailleBlank = 0x2800;
    const auto code = static_cast<UChar32>(character);
    if (character == brailleBlank || u_hasBinaryProperty(code, UCHAR_DEFAULT_IGNORABLE_CODE_POINT))
        return false;
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_Control:
        return false;
    case QChar::Other_Format: // Few of them are drawn, such as the Arabic number sign.
        return u_hasBinaryProperty(code, UCHAR_PREPENDED_CONCATENATION_MARK);
    default:
        return true;
    }
}

constexpr qsizetype longestCodePoint = 2; // UTF-16 units

/// Where the characters of a text begin and end (grapheme clusters). The text must outlive it.
class Characters {
public:
    explicit Characters(QStringView text) {
        UErrorCode error = U_ZERO_ERROR;
        boundaries_.reset(
            ubrk_open(UBRK_CHARACTER, "", text.utf16(), static_cast<int32_t>(text.size()), &error));
        if (U_FAILURE(error))
            qFatal("ICU does not know where characters end: %s", u_errorName(error));
    }

    /// The nearest boundary at or before a place within the text.
    qsizetype boundaryBefore(qsizetype unit) {
        const auto place = static_cast<int32_t>(unit);
        return ubrk_isBoundary(boundaries_.get(), place) ? place : ubrk_preceding(boundaries_.get(), place);
    }
    qsizetype boundaryAfter(qsizetype unit) {
        const auto place = static_cast<int32_t>(unit);
        return ubrk_isBoundary(boundaries_.get(), place) ? place : ubrk_following(boundaries_.get(), place);
    }
    /// Where that many characters end, or the text when it has fewer.
    qsizetype endOf(int count) {
        for (int taken = 0; taken < count && ubrk_next(boundaries_.get()) != UBRK_DONE; ++taken) {}
        return ubrk_current(boundaries_.get());
    }

private:
    struct Close {
        void operator()(UBreakIterator *boundaries) const { ubrk_close(boundaries); }
    };
    std::unique_ptr<UBreakIterator, Close> boundaries_;
};

} // namespace

QString trimmedSpaces(const QString &text) {
    const auto begin = std::find_if_not(text.begin(), text.end(), isHorizontalSpace);
    const auto end = std::find_if_not(text.rbegin(), std::make_reverse_iterator(begin), isHorizontalSpace);
    return text.sliced(begin - text.begin(), end.base() - begin);
}

bool isBlank(const QString &text) {
    const QList<uint> characters = text.toUcs4();
    return std::none_of(characters.begin(), characters.end(), isVisible);
}

QString firstCharacters(const QString &text, int count) {
    // A character may be long, but not so long that all of a huge text has to be looked at.
    constexpr qsizetype mostUnitsPerCharacter = 32;
    const QString head = firstUnits(text, count * mostUnitsPerCharacter);
    return head.first(Characters(head).endOf(count));
}

QString firstUnits(QStringView text, qsizetype units) {
    if (text.size() <= units)
        return text.toString();
    const QStringView looked = text.first(std::min(text.size(), units + longestCodePoint));
    return text.first(Characters(looked).boundaryBefore(units)).toString();
}

QString lastUnits(QStringView text, qsizetype units) {
    if (text.size() <= units)
        return text.toString();
    // What comes before decides where characters begin: in a row of flags, all of the row.
    constexpr qsizetype mostLookedAt = 20'000;
    const QStringView looked = text.last(std::min(text.size(), units + mostLookedAt));
    return looked.sliced(Characters(looked).boundaryAfter(looked.size() - units)).toString();
}

QString moreNotShown(std::size_t count) {
    return count == 0 ? QString() : qtTrId("common.more").arg(count);
}

} // namespace quorbit
