#pragma once

#include "settings/SettingsTab.h"
#include "settings/about/AboutModel.h"

#include <QUrl>

#include <functional>
#include <vector>

class QVBoxLayout;

namespace quorbit {

class Button;
class FormSection;
class IconLabel;
class MenuPicker;
class TextLabel;
class UpdateBanner;
class UpdateChecker;

/// What the About tab has the application do.
struct AboutServices {
    struct Language {
        QString storedValue;
        QString label;
    };

    std::vector<Language> languages; ///< to choose from, the system's own first
    std::function<QString()> storedLanguage;
    /// Stores a choice of language, by its stored value, to take effect at the next start.
    std::function<void(const QString &)> chooseLanguage;
    std::function<void()> restart;
    std::function<void(const QUrl &)> openAddress;
};

/// The tab that tells which version runs and which is newest, and lets the user choose a language.
class AboutTab final : public SettingsTab {
    Q_OBJECT

public:
    /// `updater` and `formats` must outlive the tab; without a `bundleVersion` no version is shown.
    AboutTab(UpdateChecker &updater, const TimeFormats &formats, AboutServices services,
             std::optional<QString> bundleVersion, QWidget *parent = nullptr);

    void showState() override;
    /// Shows `model`; costs one comparison when that is what is shown already.
    void render(const AboutModel &model);

protected:
    void changeEvent(QEvent *event) override;

private:
    QWidget *makeHero();
    FormSection *makeUpdateSection();
    FormSection *makeLanguageSection();
    QWidget *makeLanguageFooter();
    void keepHeights();

    void pickLanguage(int index);
    void openInBrowser();

    UpdateChecker &updater_;
    const TimeFormats &formats_;
    const AboutServices services_;
    const std::optional<QString> bundleVersion_;
    bool isRestartPending_ = false;

    AboutModel shown_;
    TextLabel *version_;
    UpdateBanner *banner_;
    QWidget *updateRow_;
    IconLabel *checkStatus_;
    Button *check_;
    TextLabel *lastChecked_;
    MenuPicker *language_;
    QWidget *languageFooter_;
    TextLabel *systemHint_;
    QWidget *restartPrompt_;
    Button *restart_;
};

} // namespace quorbit
