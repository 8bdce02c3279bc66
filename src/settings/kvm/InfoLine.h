#pragma once

#include <QWidget>

namespace quorbit {

/// A tip: a symbol and a text that takes as many lines as it needs.
class InfoLine final : public QWidget {
    Q_OBJECT

public:
    InfoLine(const QString &icon, const QString &text, QWidget *parent = nullptr);
};

} // namespace quorbit
