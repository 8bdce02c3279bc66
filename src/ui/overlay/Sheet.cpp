#include "ui/overlay/Sheet.h"

#include <QVBoxLayout>

namespace quorbit {

Sheet::Sheet(const QString &name, QSize size, QWidget *over) : Overlay(over) {
    setAccessibleName(name);
    column()->setContentsMargins(20, 20, 20, 20);
    column()->setSpacing(16);
    setPanelSize(size);
}

} // namespace quorbit
