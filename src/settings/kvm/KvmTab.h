#pragma once

#include "settings/SettingsTab.h"
#include "settings/kvm/KvmModel.h"

#include <functional>
#include <optional>

namespace quorbit {

class AccessibilityRow;
class Daemon;
class Form;
class FormRow;
class FormSection;
class MasterFooter;
class MenuPicker;
class ScreenLayoutCanvas;
class StatusDot;
class Switch;
class TextLabel;

/// What the KVM tab asks of the system, and has the application do.
struct KvmServices {
    std::function<bool()> isAccessibilityTrusted; ///< whether this process may drive keyboard and pointer
    std::function<void()> openAccessibilitySettings;
    std::function<void()> restart;
};

/// Sharing keyboard and mouse: whether it is on and ready, where the screens stand, how the pointer changes
/// between them, and the permission that it needs. Every control saves at once and shows what the service
/// answers.
class KvmTab final : public SettingsTab {
    Q_OBJECT

public:
    KvmTab(Daemon &daemon, KvmServices services, QWidget *parent = nullptr);
    ~KvmTab() override;

    void showState() override;
    /// Shows `model`; costs one comparison when that is what is shown already.
    void render(const std::optional<KvmModel> &model);

private:
    FormSection *makeToggleSection();
    FormSection *makeLayoutSection();
    FormSection *makeBehaviorSection();
    FormSection *makeAccessibilitySection();
    FormSection *makeTips();
    template <class Value>
    MenuPicker *makePicker(const std::vector<PickerOption<Value>> &options,
                           std::optional<Value> DaemonSettings::*member);
    void renderStatus(const KvmModel &model);
    void renderLayout(const KvmModel &model);

    void saveLayout(const ScreenLayout &layout, int number);
    void enable(bool wanted);
    void requestAuthorization();

    Daemon &daemon_;
    const KvmServices services_;
    /// A change of the switch waits for the service's restart. Holds for as long as the tab lives.
    bool showsRestartHint_ = false;
    std::optional<KvmModel> shown_;
    FormSection *loading_;
    QList<FormSection *> sections_;
    Switch *enabled_;
    FormRow *statusRow_;
    StatusDot *dot_;
    TextLabel *status_;
    FormRow *restartHint_;
    ScreenLayoutCanvas *canvas_;
    FormRow *canvasRow_;
    FormRow *noPeerRow_;
    MasterFooter *masterFooter_;
    Switch *swap_;
    MenuPicker *switchDelay_;
    MenuPicker *cornerSize_;
    MenuPicker *sensitivity_;
    AccessibilityRow *accessibility_;
};

} // namespace quorbit
