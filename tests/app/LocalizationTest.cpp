#include "app/Localization.h"
#include "support/FakeDefaults.h"
#include "support/FakePlatform.h"

#include <QLocale>
#include <QTest>

using namespace quorbit;
using namespace quorbit::test;

namespace {

const QString languageKey = QStringLiteral("quorbit.language");
const QString overrideKey = QStringLiteral("AppleLanguages");

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class LocalizationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choiceIsStoredWithItsOverride() {
        FakeDefaults defaults;
        LanguageOverride::apply(AppLanguage::english, defaults);
        QCOMPARE(defaults.values.value(languageKey), QVariant(QStringLiteral("en")));
        QCOMPARE(defaults.values.value(overrideKey), QVariant(words("en")));
        LanguageOverride::apply(AppLanguage::zhHans, defaults);
        QCOMPARE(defaults.values.value(overrideKey), QVariant(words("zh-Hans")));
        LanguageOverride::apply(AppLanguage::system, defaults);
        QCOMPARE(defaults.values.value(languageKey), QVariant(QString()));
        QVERIFY(!defaults.contains(overrideKey));
        QCOMPARE(defaults.synchronizations, 3);
    }

    void startRenewsTheOverrideOfAKnownChoiceAlone_data() {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QVariant>("before");
        QTest::addColumn<QVariant>("after");
        const QVariant none;
        QTest::newRow("Chinese") << QVariant(QStringLiteral("zh-Hans")) << none << QVariant(words("zh-Hans"));
        QTest::newRow("English over another")
            << QVariant(QStringLiteral("en")) << QVariant(words("fr")) << QVariant(words("en"));
        QTest::newRow("another case") << QVariant(QStringLiteral("zh-hans")) << none << none;
        QTest::newRow("another language")
            << QVariant(QStringLiteral("fr")) << QVariant(words("de")) << QVariant(words("de"));
        QTest::newRow("the system's")
            << QVariant(QString()) << QVariant(words("en")) << QVariant(words("en"));
        QTest::newRow("a list") << QVariant(words("en")) << none << none;
        QTest::newRow("fresh") << none << none << none;
    }
    void startRenewsTheOverrideOfAKnownChoiceAlone() {
        QFETCH(QVariant, stored);
        QFETCH(QVariant, before);
        QFETCH(QVariant, after);
        FakeDefaults defaults;
        if (stored.isValid())
            defaults.values.insert(languageKey, stored);
        if (before.isValid())
            defaults.values.insert(overrideKey, before);
        applyStoredLanguageOverride(defaults);
        QCOMPARE(defaults.values.value(overrideKey), after);
        QCOMPARE(defaults.values.size(), (stored.isValid() ? 1 : 0) + (after.isValid() ? 1 : 0));
    }

    void tablesFollowTheWishes_data() {
        QTest::addColumn<QVariant>("override");
        QTest::addColumn<QStringList>("system");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char *name, const QVariant &override, const char *system,
                            const char *expected) {
            QTest::newRow(name) << override << words(system) << words(expected);
        };
        const QVariant none;
        for (const char *tag : {"zh", "zh-CN", "zh-SG", "zh-Hans-HK", "zh_CN.UTF-8", "ZH-hans"})
            row(tag, none, tag, "zh-Hans");
        row("British", none, "en-GB", "en");
        row("Chinese before English", none, "zh-CN en-US", "zh-Hans en");
        row("French before Chinese", none, "fr-FR zh-CN", "zh-Hans");
        row("traditional alone", none, "zh-TW zh-Hant-TW zh", "zh-Hans");
        row("traditional before English", none, "zh-Hant-HK zh en-HK", "en zh-Hans");
        row("traditional before simplified", none, "zh-TW zh-CN en", "zh-Hans en");
        row("French", none, "fr-FR", "en");
        row("like English", none, "eng enm", "en");
        row("nothing", none, "", "en");
        row("C", none, "C", "en");
        row("override", QVariant(words("zh-Hans")), "en-US", "zh-Hans");
        row("override without a table", QVariant(words("fr")), "zh-CN", "en");
        row("override that is no list", QVariant(5), "zh-CN", "zh-Hans");
        row("empty override", QVariant(QStringList()), "zh-CN", "zh-Hans");
    }
    void tablesFollowTheWishes() {
        QFETCH(QVariant, override);
        FakeDefaults defaults;
        if (override.isValid())
            defaults.values.insert(overrideKey, override);
        FakePlatform platform;
        QFETCH(QStringList, system);
        platform.languages = system;
        QTEST(preferredLocalizations(defaults, platform), "expected");
    }

    void storedTextsNameTheirChoice() {
        for (const AppLanguage language : appLanguages)
            QCOMPARE(appLanguage(rawValue(language)), language);
        QCOMPARE(appLanguage(QStringLiteral("EN")), std::nullopt);
    }

    void formatsAreOfTheLanguageInForce() {
        QCOMPARE(localeFor(QStringLiteral("zh-Hans")).language(), QLocale::Chinese);
        QCOMPARE(localeFor(QStringLiteral("zh-Hans")).script(), QLocale::SimplifiedHanScript);
        QCOMPARE(localeFor(QStringLiteral("en")).language(), QLocale::English);
    }
};

QTEST_GUILESS_MAIN(LocalizationTest)
#include "LocalizationTest.moc"
