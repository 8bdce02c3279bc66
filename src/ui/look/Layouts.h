#pragma once

class QHBoxLayout;
class QVBoxLayout;
class QWidget;

namespace quorbit {

/// Layouts without margins, of a widget or to be put into another layout.
QVBoxLayout *columnLayout(QWidget *owner = nullptr, int spacing = 0);
QHBoxLayout *lineLayout(QWidget *owner = nullptr, int spacing = 0);

} // namespace quorbit
