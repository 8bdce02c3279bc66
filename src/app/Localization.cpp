#include "app/Localization.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

const QString languageKey = u"quorbit.language"_s;
const QString overrideKey = u"AppleLanguages"_s;
const QString fallback = u"en"_s;

constexpr std::array traditionalChinese{"hant"_L1, "tw"_L1, "hk"_L1, "mo"_L1};

constexpr std::array languages{
    AppLanguage{"zh-Hans"_L1, "about.language.zh", traditionalChinese},
    AppLanguage{"en"_L1, "about.language.en"},
};

bool isLanguage(const QString &rawValue) {
    return std::ranges::any_of(languages, [&](auto &language) { return language.rawValue == rawValue; });
}

/// In lower case; "zh_TW.UTF-8@variant" has those of "zh-TW".
QStringList subtags(const QString &tag) {
    QString language = tag.section(u'.', 0, 0).section(u'@', 0, 0).toLower();
    return language.replace(u'_', u'-').split(u'-');
}

enum class Match { none, asLastResort, full };

Match match(const AppLanguage &language, const QStringList &wanted) {
    const QStringList own = subtags(language.rawValue);
    if (wanted.front() != own.front())
        return Match::none;
    const bool isOtherVariant =
        std::ranges::any_of(language.lastResortFor, [&](auto subtag) { return wanted.contains(subtag); });
    // "zh-Hans-HK" names the script, which counts for more than the region.
    return isOtherVariant && !wanted.contains(own.back()) ? Match::asLastResort : Match::full;
}

void install(const QLocale &locale, const QString &tables, const QString &folder) {
    auto *texts = new QTranslator(qApp);
    if (texts->load(locale, tables, u"_"_s, folder))
        QCoreApplication::installTranslator(texts);
}

} // namespace

std::span<const AppLanguage> appLanguages() {
    return languages;
}

QString storedLanguage(const UserDefaults &defaults) {
    return defaults.string(languageKey);
}

void LanguageOverride::apply(const QString &rawValue, UserDefaults &defaults) {
    if (isLanguage(rawValue)) {
        defaults.set(languageKey, rawValue);
        defaults.set(overrideKey, QStringList{rawValue});
    } else {
        defaults.set(languageKey, QString());
        defaults.remove(overrideKey);
    }
    defaults.synchronize();
}

void applyStoredLanguageOverride(UserDefaults &defaults) {
    if (const QString stored = storedLanguage(defaults); isLanguage(stored))
        defaults.set(overrideKey, QStringList{stored});
}

QStringList preferredLocalizations(const UserDefaults &defaults, const Platform &platform) {
    QStringList wanted = defaults.strings(overrideKey);
    if (wanted.isEmpty())
        wanted = platform.systemLanguages();

    QStringList found;
    QStringList lastResorts;
    for (const QString &tag : wanted) {
        const QStringList parts = subtags(tag);
        for (const AppLanguage &language : languages) {
            const Match how = match(language, parts);
            // A bare "zh" after "zh-TW" is the same wish in short.
            const bool isRepeated = lastResorts.contains(language.rawValue) && parts.size() == 1;
            if (how == Match::asLastResort)
                lastResorts.append(language.rawValue);
            else if (how == Match::full && !isRepeated)
                found.append(language.rawValue);
        }
    }
    found += lastResorts;
    found.removeDuplicates();
    return found.isEmpty() ? QStringList{fallback} : found;
}

QLocale localeFor(const QString &localization, const QLocale &system) {
    const QLocale own(localization);
    return system.language() == own.language() ? system : own;
}

void installTranslations(const QString &localization) {
    const QLocale locale(localization);
    install(locale, u"quorbit"_s, u":/i18n"_s);
    // The toolkit's own texts, such as those of a text field's menu.
    install(locale, u"qtbase"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace quorbit
