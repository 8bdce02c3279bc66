#include "app/Localization.h"
#include "support/FakeDefaults.h"
#include "support/FakePlatform.h"
#include "support/Row.h"

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

namespace {

const QString languageKey = u"quorbit.language"_s;
const QString overrideKey = u"AppleLanguages"_s;

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

class LocalizationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choiceIsStoredWithItsOverride() {
        FakeDefaults defaults;
        LanguageOverride::apply(u"en"_s, defaults);
        QCOMPARE(defaults.values.value(languageKey), QVariant(u"en"_s));
        QCOMPARE(defaults.values.value(overrideKey), QVariant(words("en")));
        LanguageOverride::apply(QString(), defaults);
        QCOMPARE(defaults.values.value(languageKey), QVariant(QString()));
        QVERIFY(!defaults.contains(overrideKey));
        QCOMPARE(defaults.synchronizations, 2);
    }

    void datesFollowTheLanguageAndThenTheRegion() {
        const std::tuple<QString, QString, QString> rows[]{{u"en"_s, u"en_GB"_s, u"en_GB"_s},
                                                           {u"en"_s, u"zh_CN"_s, u"en_US"_s},
                                                           {u"zh-Hans"_s, u"de_DE"_s, u"zh_CN"_s},
                                                           {u"zh-Hans"_s, u"zh_SG"_s, u"zh_SG"_s}};
        for (const auto &[language, system, expected] : rows) {
            const Row row(language.toUtf8() + " on " + system.toUtf8());
            QCOMPARE(localeFor(language, QLocale(system)).name(), expected);
        }
    }

    void tablesFollowTheWishes() {
        const struct {
            const char *system;
            const char *expected;
            QVariant override = {};
        } rows[]{{"en-GB", "en"},
                 {"zh-CN en-US", "zh-Hans en"},
                 {"zh-Hans-HK en-HK", "zh-Hans en"},
                 {"zh-TW zh-Hant-TW zh", "zh-Hans"},
                 {"zh-Hant-HK zh en-HK", "en zh-Hans"},
                 {"zh-TW zh-CN en", "zh-Hans en"},
                 {"eng enm", "en"},
                 {"C", "en"},
                 {"en-US", "zh-Hans", words("zh-Hans")},
                 {"zh-CN", "zh-Hans", 5},
                 {"zh_CN.UTF-8", "zh-Hans"},
                 {"ZH-hans", "zh-Hans"}};
        for (const auto &[system, expected, override] : rows) {
            const Row row(system);
            FakeDefaults defaults;
            if (override.isValid())
                defaults.values.insert(overrideKey, override);
            FakePlatform platform;
            platform.languages = words(system);
            QCOMPARE(preferredLocalizations(defaults, platform), words(expected));
        }
    }
};

QTEST_GUILESS_MAIN(LocalizationTest)
#include "LocalizationTest.moc"
