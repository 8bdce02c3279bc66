#pragma once

#include "platform/Platform.h"
#include "platform/UserDefaults.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class QLocale;

namespace quorbit {

/// What the user can choose for the interface.
enum class AppLanguage { system, zhHans, english };

/// All choices, in the order in which they are offered.
inline constexpr std::array appLanguages{AppLanguage::system, AppLanguage::zhHans, AppLanguage::english};

/// How a choice is stored under "quorbit.language".
QString rawValue(AppLanguage language);
/// The choice that is stored so, letter for letter.
std::optional<AppLanguage> appLanguage(const QString &rawValue);
/// The key of the text that names a choice.
const char *labelKey(AppLanguage language);

/// The choice as it is stored, which may be any text.
QString storedLanguage(const UserDefaults &defaults);

namespace LanguageOverride {

/// Stores the choice, to take effect at the next start.
void apply(AppLanguage language, UserDefaults &defaults);

} // namespace LanguageOverride

/// Renews the override of a stored choice; anything else that is stored changes nothing.
void applyStoredLanguageOverride(UserDefaults &defaults);

/// The interface languages in force, best first and never empty: those of "zh-Hans" and "en" that the
/// override, or without one the system, asks for. English when neither is asked for.
QStringList preferredLocalizations(const UserDefaults &defaults, const Platform &platform);

/// The locale whose formats go with an interface language: the user's own if it is of that language.
QLocale localeFor(const QString &localization);

/// Loads the texts of an interface language into the application. A key without a text shows as it is.
void installTranslations(const QString &localization);

} // namespace quorbit
