#include "platform/linux/accessibility/TextRequests.h"

#include "platform/linux/accessibility/TextUnits.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <span>

namespace quorbit {

namespace {

/// The toolkit's -1 and the length are where a cursor at the end stands.
std::optional<int> offsetIn(const QString &text, int offset) {
    const int length = static_cast<int>(text.size());
    if (offset < -1 || offset > length)
        return std::nullopt;
    return offset == -1 ? length : offset;
}

/// Where a cursor can be, which is not between the halves of a surrogate pair.
bool isCursorPlace(const QString &text, int offset) {
    return offset >= 0 && offset <= text.size() &&
           !(offset > 0 && offset < text.size() && text[offset - 1].isHighSurrogate() &&
             text[offset].isLowSurrogate());
}

bool isRange(const QString &text, int start, int end) {
    return isCursorPlace(text, start) && isCursorPlace(text, end) && start <= end;
}

// In the order of the bus's numbers.
constexpr std::array boundaries{TextUnit::character, TextUnit::wordStart, TextUnit::wordEnd,
                                TextUnit::sentence,  TextUnit::sentence,  TextUnit::line,
                                TextUnit::line};
constexpr std::array granularities{TextUnit::character, TextUnit::wordStart, TextUnit::sentence,
                                   TextUnit::line, TextUnit::line};

bool hasUnit(const BusRequest &request, std::span<const TextUnit> units) {
    return hasOffset(request) && request.number(1) >= 0 && request.number(1) < std::ssize(units);
}

using Pick = TextPiece (*)(const QString &, int, TextUnit);
QVariantList pick(const BusRequest &request, Pick piece, std::span<const TextUnit> units) {
    const QString text = request.text();
    const TextUnit unit = units[static_cast<std::size_t>(request.number(1))];
    const TextPiece found = piece(text, *offsetIn(text, request.number(0)), unit);
    return {text.mid(found.start, found.end - found.start), found.start, found.end};
}

} // namespace

bool hasOffset(const BusRequest &request) {
    return request.object.textInterface() && offsetIn(request.text(), request.number(0));
}

bool hasRange(const BusRequest &request) {
    const auto end = offsetIn(request.text(), request.number(1));
    return request.object.textInterface() && end && isRange(request.text(), request.number(0), *end);
}

bool hasBoundary(const BusRequest &request) {
    return hasUnit(request, boundaries);
}

bool hasGranularity(const BusRequest &request) {
    return hasUnit(request, granularities);
}

bool hasText(const BusRequest &request) {
    const int start = request.number(0);
    const int end = request.number(1);
    return hasOffset(request) && start >= 0 && (end == -1 || end >= start);
}

bool isSelection(const BusRequest &request) {
    return request.object.textInterface() && request.number(0) == 0;
}

bool movesCursor(const BusRequest &request) {
    return request.object.textInterface() && isCursorPlace(request.text(), request.number(0)) &&
           isWithinReach(request);
}

bool selects(const BusRequest &request) {
    return request.object.textInterface() && isRange(request.text(), request.number(0), request.number(1)) &&
           isWithinReach(request);
}

bool reselects(const BusRequest &request) {
    return isSelection(request) && isRange(request.text(), request.number(1), request.number(2)) &&
           isWithinReach(request);
}

bool deselects(const BusRequest &request) {
    return isSelection(request) && request.object.textInterface()->selectionCount() > 0 &&
           isWithinReach(request);
}

bool isEditable(const BusRequest &request) {
    return request.object.editableTextInterface() && !request.object.state().readOnly &&
           isWithinReach(request);
}

bool editsAtCursor(const BusRequest &request) {
    return isEditable(request) && movesCursor(request);
}

bool editsRange(const BusRequest &request) {
    return isEditable(request) && selects(request);
}

bool inserts(const BusRequest &request) {
    const QString text = request.string(1);
    const int length = request.number(2);
    return editsAtCursor(request) && length >= 0 && length <= text.toUtf8().size() &&
           isCursorPlace(text, std::min(length, static_cast<int>(text.size())));
}

// Where the length is greater, the toolkit would fill up with what is in the memory.
QVariantList insertText(const BusRequest &request) {
    request.object.editableTextInterface()->insertText(request.number(0),
                                                       request.string(1).left(request.number(2)));
    return {true};
}

QVariantList textOfRange(const BusRequest &request) {
    const QString text = request.text();
    const int end = offsetIn(text, request.number(1)).value_or(static_cast<int>(text.size()));
    return {text.mid(request.number(0), end - request.number(0))};
}

QVariantList characterAt(const BusRequest &request) {
    const QString text = request.text();
    const QList<uint> codes = text.mid(*offsetIn(text, request.number(0)), 2).toUcs4();
    return {codes.isEmpty() ? 0 : static_cast<int>(codes.first())};
}

QVariantList stringAt(const BusRequest &request) {
    return pick(request, pieceAt, granularities);
}

QVariantList textBefore(const BusRequest &request) {
    return pick(request, pieceBefore, boundaries);
}

QVariantList textAt(const BusRequest &request) {
    return pick(request, pieceAt, boundaries);
}

QVariantList textAfter(const BusRequest &request) {
    return pick(request, pieceAfter, boundaries);
}

} // namespace quorbit
