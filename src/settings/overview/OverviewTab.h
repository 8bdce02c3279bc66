#pragma once

#include "settings/SettingsTab.h"
#include "settings/overview/OverviewModel.h"
#include "ui/form/RowList.h"

#include <optional>

namespace quorbit {

class Daemon;
class FormRow;
class FormSection;
class SelectableText;
class StatusDot;
class TextField;
class TextLabel;

/// A connected computer and its identifier, which can be copied.
class PeerRow final : public QWidget {
    Q_OBJECT

public:
    explicit PeerRow(const OverviewModel::Peer &model, QWidget *parent = nullptr);

    bool isFor(const OverviewModel::Peer &model) const { return deviceId_ == model.deviceId; }
    void render(const OverviewModel::Peer &model);

private:
    const QString deviceId_;
    FormRow *row_;
};

/// Who this computer is, what its service is doing and which computers are connected. The name of the
/// computer can be changed here; Return saves it.
class OverviewTab final : public SettingsTab {
    Q_OBJECT

public:
    explicit OverviewTab(Daemon &daemon, QWidget *parent = nullptr);

    void showState() override;
    void render(const OverviewModel &model);

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void addComputer(FormSection *section);
    void commitName();
    void renderIdentity(const std::optional<OverviewModel::Identity> &identity);

    Daemon &daemon_;
    std::optional<NameDraft> draft_; ///< of the name, from when the tab comes into view until it goes
    std::optional<OverviewModel> shown_;
    TextField *name_;
    SelectableText *deviceId_;
    TextLabel *port_;
    StatusDot *dot_;
    TextLabel *status_;
    QList<QWidget *> identityRows_;
    FormSection *peersSection_;
    RowList<PeerRow> peers_;
    FormRow *noPeers_;
    FormSection *activity_;
    TextLabel *lastActivity_;
};

} // namespace quorbit
