#include "app/Localization.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace quorbit {

namespace {

const QString languageKey = QStringLiteral("quorbit.language");
const QString overrideKey = QStringLiteral("AppleLanguages");
const QString chineseTable = QStringLiteral("zh-Hans");
const QString englishTable = QStringLiteral("en");

struct Choice {
    AppLanguage language;
    QString rawValue;
    const char *labelKey;
};

const std::array<Choice, 3> &choices() {
    static const std::array<Choice, 3> all{{{AppLanguage::system, QString(), "about.language.system"},
                                            {AppLanguage::zhHans, chineseTable, "about.language.zh"},
                                            {AppLanguage::english, englishTable, "about.language.en"}}};
    return all;
}

const Choice &choice(AppLanguage language) {
    for (const Choice &candidate : choices()) {
        if (candidate.language == language)
            return candidate;
    }
    return choices().front();
}

/// Who reads traditional characters alone is served by the simplified table only for want of English.
enum class Match { nothing, inEnglish, inSimplified, inTraditional };

Match match(const QString &tag) {
    // "zh_TW.UTF-8@variant" and "zh-TW" mean the same.
    QString language = tag.section(QLatin1Char('.'), 0, 0).section(QLatin1Char('@'), 0, 0).toLower();
    const QStringList parts = language.replace(QLatin1Char('_'), QLatin1Char('-')).split(QLatin1Char('-'));
    if (parts.front() == QLatin1String("en"))
        return Match::inEnglish;
    if (parts.front() != QLatin1String("zh"))
        return Match::nothing;
    if (parts.contains(QLatin1String("hans")))
        return Match::inSimplified;
    for (const char *traditional : {"hant", "tw", "hk", "mo"}) {
        if (parts.contains(QLatin1String(traditional)))
            return Match::inTraditional;
    }
    return Match::inSimplified;
}

} // namespace

QString rawValue(AppLanguage language) {
    return choice(language).rawValue;
}

std::optional<AppLanguage> appLanguage(const QString &rawValue) {
    for (const Choice &candidate : choices()) {
        if (candidate.rawValue == rawValue)
            return candidate.language;
    }
    return std::nullopt;
}

const char *labelKey(AppLanguage language) {
    return choice(language).labelKey;
}

QString storedLanguage(const UserDefaults &defaults) {
    return defaults.string(languageKey);
}

void LanguageOverride::apply(AppLanguage language, UserDefaults &defaults) {
    const QString stored = rawValue(language);
    defaults.set(languageKey, stored);
    if (language == AppLanguage::system)
        defaults.remove(overrideKey);
    else
        defaults.set(overrideKey, QStringList{stored});
    defaults.synchronize();
}

void applyStoredLanguageOverride(UserDefaults &defaults) {
    const auto stored = appLanguage(defaults.string(languageKey));
    if (stored && *stored != AppLanguage::system)
        defaults.set(overrideKey, QStringList{rawValue(*stored)});
}

QStringList preferredLocalizations(const UserDefaults &defaults, const Platform &platform) {
    QStringList wanted = defaults.strings(overrideKey);
    if (wanted.isEmpty())
        wanted = platform.systemLanguages();

    QStringList found;
    bool readsTraditional = false;
    for (const QString &tag : wanted) {
        const Match table = match(tag);
        readsTraditional = readsTraditional || table == Match::inTraditional;
        // A bare "zh" after "zh-TW" is the same wish in short.
        if (table == Match::inEnglish)
            found.append(englishTable);
        else if (table == Match::inSimplified && !(readsTraditional && tag == QLatin1String("zh")))
            found.append(chineseTable);
    }
    if (readsTraditional)
        found.append(chineseTable);
    found.removeDuplicates();
    return found.isEmpty() ? QStringList{englishTable} : found;
}

QLocale localeFor(const QString &localization) {
    const QLocale system = QLocale::system();
    const QLocale::Language language = localization == chineseTable ? QLocale::Chinese : QLocale::English;
    return system.language() == language ? system : QLocale(language);
}

void installTranslations(const QString &localization) {
    const QString table =
        localization == chineseTable ? QStringLiteral("quorbit_zh_Hans") : QStringLiteral("quorbit_en");
    auto *texts = new QTranslator(qApp);
    if (texts->load(QStringLiteral(":/i18n/%1.qm").arg(table)))
        QCoreApplication::installTranslator(texts);
    if (localization != chineseTable)
        return;
    // The toolkit's own texts, such as those of a text field's menu; English is built into it.
    auto *toolkit = new QTranslator(qApp);
    if (toolkit->load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(toolkit);
}

} // namespace quorbit
