#pragma once

#include "menubar/MenuBarModel.h"
#include "ui/controls/HoverRow.h"

namespace quorbit {

class SymbolLabel;
class TextLabel;

/// An entry of the clipboard history; a click chooses it.
class HistoryRow final : public HoverRow {
    Q_OBJECT

public:
    explicit HistoryRow(const HistoryItem &model, QWidget *parent = nullptr);

    qint64 id() const { return shown_.id; }
    bool isFor(const HistoryItem &model) const { return shown_.id == model.id; }
    void render(const HistoryItem &model);

    QString accessibleFallbackName() const override;

private:
    HistoryItem shown_;
    SymbolLabel *symbol_;
    TextLabel *preview_;
    TextLabel *source_;
};

} // namespace quorbit
