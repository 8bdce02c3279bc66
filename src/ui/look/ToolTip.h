#pragma once

#include <QRect>
#include <QString>

class QHelpEvent;
class QWidget;

namespace quorbit {

/// Shows a text, as it stands and broken into lines, where the pointer rests on `part` of a widget; the whole
/// of it if there is no part. Unlike QWidget's own tip it takes no text for markup and tells screen readers
/// nothing that they know already.
void showToolTip(const QHelpEvent &event, const QString &text, QWidget *widget, const QRect &part = {});

} // namespace quorbit
