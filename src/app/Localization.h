#pragma once

#include "platform/Platform.h"
#include "platform/UserDefaults.h"

#include <QString>
#include <QStringList>

#include <span>

class QLocale;

namespace quorbit {

/// A language that the user can choose. Besides, the choice may be left to the system, which is stored as an
/// empty text.
struct AppLanguage {
    /// The language tag (BCP 47): how the choice is stored, letter for letter, and the name of the string
    /// table, "zh-Hans" of translations/quorbit_zh_Hans.ts.
    QLatin1String rawValue;
    const char *labelKey; ///< of the text that names the language
    /// Scripts and regions whose readers take this table only for want of any other that they ask for.
    std::span<const QLatin1String> lastResortFor = {};
};

/// All languages, in the order in which they are offered. A line and a string table are all that one needs.
std::span<const AppLanguage> appLanguages();

/// The choice as it is stored, which may be any text.
QString storedLanguage(const UserDefaults &defaults);

namespace LanguageOverride {

/// Stores a choice, to take effect at the next start. Whatever is no language leaves it to the system.
void apply(const QString &rawValue, UserDefaults &defaults);

} // namespace LanguageOverride

/// Renews the override of a stored language; anything else that is stored changes nothing.
void applyStoredLanguageOverride(UserDefaults &defaults);

/// The interface languages in force, by their tags, best first and never empty: those that the override, or
/// without one the system, asks for. English when there is none of them.
QStringList preferredLocalizations(const UserDefaults &defaults, const Platform &platform);

/// The locale whose formats go with an interface language: the system's if it is of that language.
QLocale localeFor(const QString &localization, const QLocale &system);

/// Loads the texts of an interface language into the application. A key without a text shows as it is.
void installTranslations(const QString &localization);

} // namespace quorbit
