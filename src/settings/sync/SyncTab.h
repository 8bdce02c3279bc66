#pragma once

#include "settings/SettingsTab.h"
#include "settings/sync/SyncModel.h"

#include <optional>

namespace quorbit {

class Daemon;
class Form;
class FormRow;
class FormSection;
class HistoryList;
class Stepper;
class Switch;
class TextField;

/// What is synced, up to which size, and the clipboard history. Every control saves at once and shows what
/// the service answers.
class SyncTab final : public SettingsTab {
    Q_OBJECT

public:
    explicit SyncTab(Daemon &daemon, QWidget *parent = nullptr);

    void showState() override;
    void render(const std::optional<SyncModel> &model);

private:
    Switch *addType(const QString &title, bool DaemonSettings::*member);
    void addTransfer();
    void addHistory();
    void renderHistory(const std::optional<SyncModel::History> &history);

    Daemon &daemon_;
    HistoryFilter filter_;
    std::optional<SyncModel> shown_;
    Form *form_;
    FormSection *loading_;
    FormSection *types_;
    FormSection *transfer_;
    FormSection *history_;
    Switch *text_;
    Switch *image_;
    Switch *files_;
    Stepper *fileCap_;
    TextField *search_;
    FormRow *searchRow_;
    FormRow *noMatchRow_;
    HistoryList *list_;
};

} // namespace quorbit
