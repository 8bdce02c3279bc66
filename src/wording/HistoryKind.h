#pragma once

#include <QString>

#include <optional>

namespace quorbit {

/// The symbol of a history entry of that type; a plain document for types that this program does not know.
QString historyKindSymbol(const std::optional<QString> &type);

} // namespace quorbit
