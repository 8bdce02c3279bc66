#pragma once

#include "platform/linux/accessibility/BusRequest.h"

namespace quorbit {

// Whether a request of the interfaces Text and EditableText can be granted. An offset is -1, for the end as
// with the toolkit, or from 0 to the text's length.

bool hasOffset(const BusRequest &request);
bool hasRange(const BusRequest &request);
/// An offset and one of the kinds of units that the bus numbers as boundaries or as granularities.
bool hasBoundary(const BusRequest &request);
bool hasGranularity(const BusRequest &request);
/// Some readers ask for the whole text by a great number as the end.
bool hasText(const BusRequest &request);
/// No text has more than one selection; readers ask for the first even where there is none.
bool isSelection(const BusRequest &request);

// What moves the cursor, selects or edits names existing places, and not by -1.
bool movesCursor(const BusRequest &request);
bool selects(const BusRequest &request);
bool reselects(const BusRequest &request);
bool deselects(const BusRequest &request);
bool isEditable(const BusRequest &request);
bool editsAtCursor(const BusRequest &request);
bool editsRange(const BusRequest &request);
/// Some readers count the text's bytes.
bool inserts(const BusRequest &request);

// The answers to requests that were granted.

QVariantList insertText(const BusRequest &request);
QVariantList textOfRange(const BusRequest &request);
QVariantList characterAt(const BusRequest &request);
QVariantList stringAt(const BusRequest &request);
QVariantList textBefore(const BusRequest &request);
QVariantList textAt(const BusRequest &request);
QVariantList textAfter(const BusRequest &request);

} // namespace quorbit
