#include "ui/overlay/Alert.h"

#include "ui/controls/Button.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorbit {

namespace {
constexpr int alertWidth = 320;
}

Alert::Alert(const AlertText &text, QWidget *over) : Overlay(over) {
    setAccessibleName(text.title);
    setAccessibleDescription(text.message);

    auto *title = wrapping(new TextLabel(text.title, TextStyle::headline, TextColor::primary));
    title->setHeading();
    auto *message = wrapping(new TextLabel(text.message, TextStyle::callout, TextColor::secondary));
    auto *cancel = new Button(text.cancel, ButtonKind::bordered);
    auto *confirm = new Button(text.confirm, ButtonKind::destructiveProminent);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(confirm);
    column()->setContentsMargins(20, 20, 20, 16);
    column()->setSpacing(6);
    column()->addWidget(title);
    column()->addWidget(message);
    column()->addSpacing(10);
    column()->addLayout(buttons);
    setPanelSize({alertWidth, 0});
    setDefaultButton(cancel);

    connect(cancel, &Button::clicked, this, &Alert::dismiss);
    connect(confirm, &Button::clicked, this, [this] {
        Q_EMIT confirmed();
        dismiss();
    });
}

} // namespace quorbit
