#include "menubar/FooterRow.h"

#include "menubar/PanelMetrics.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>

namespace quorbit {

FooterRow::FooterRow(const QString &title, const QKeySequence &shortcut, QWidget *parent) : HoverRow(parent) {
    setAccessibleName(title);
    auto *text = new TextLabel(title, TextStyle::body, TextColor::primary);
    panel::takeRemainingWidth(text);
    QHBoxLayout *line = panel::rowLayout(this, panel::footerInset);
    line->addWidget(text, 1);
    line->addWidget(
        new TextLabel(shortcut.toString(QKeySequence::NativeText), TextStyle::caption, TextColor::secondary));
}

} // namespace quorbit
