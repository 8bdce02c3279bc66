#include "update/Version.h"
#include "update/ManifestAddress.h"
#include "update/PackageDownload.h"

#include <QTest>

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

using Components = std::vector<qint64>;

} // namespace

Q_DECLARE_METATYPE(Components)

class VersionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parses_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Components>("components");
        const auto row = [](const char *text, const Components &components) {
            QTest::addRow("'%s'", text) << QString::fromUtf8(text) << components;
        };
        row("1.4.2", {1, 4, 2});
        row("1.4.2-beta.3", {1, 4, 2});
        row("-rc1", {0});
        row("-1.2-beta", {1, 2});
        row("--1.2", {1, 2});
        row("--", {0});
        row("", {});
        row(".", {});
        row("1..2.", {1, 2});
        row("1.-2", {1});
        row("v1.2", {0, 2});
        row("1.x.3", {1, 0, 3});
        row("2b.+7.0x1", {0, 7, 0});
        row("1. 2.3 ", {1, 0, 0});
        row("+.++1.1,5", {0, 0, 0});
        row("\u0661.2", {0, 2}); // a digit, but not a decimal one
        row("9223372036854775807.9223372036854775808", {std::numeric_limits<qint64>::max(), 0});
    }
    void parses() {
        QFETCH(QString, text);
        QFETCH(Components, components);
        QCOMPARE(version::parse(text), components);
    }

    void compares_data() {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<bool>("newer");
        QTest::addColumn<bool>("older");
        const auto row = [](const char *left, const char *right, bool newer, bool older) {
            QTest::addRow("%s and %s", left, right)
                << QString::fromUtf8(left) << QString::fromUtf8(right) << newer << older;
        };
        row("1.10.0", "1.9.9", true, false);
        row("1.2.1", "1.2", true, false);
        row("1.2", "1.2.0", false, false);
        row("2.0.0-beta", "2.0.0", false, false);
        row("v2.0", "1.0", false, true);
        row("1.x.3", "1.0.2", true, false);
        row("", "0.0.0", false, false);
        row("0.0.1", "", true, false);
    }
    void compares() {
        QFETCH(QString, left);
        QFETCH(QString, right);
        QTEST(version::compare(left, right), "newer");
        QTEST(version::compare(right, left), "older");
    }

    void picksNotes_data() {
        QTest::addColumn<QString>("notes"); // a JSON object
        QTest::addColumn<QStringList>("languages");
        QTest::addColumn<QString>("picked"); // a null string for none
        const auto row = [](const char *notes, const QStringList &languages, const QString &picked) {
            QTest::addRow("%s in %s", notes, qPrintable(languages.join(u' ')))
                << QString::fromUtf8(notes) << languages << picked;
        };
        row(R"({"zh": "修复", "en": "Fixes"})", {u"zh-Hans"_s, u"en"_s}, u"修复"_s);
        row(R"({"zh": "修复", "en": "Fixes"})", {u"en"_s, u"zh-Hans"_s}, u"Fixes"_s);
        row(R"({"zh": "修复", "en": "Fixes"})", {}, u"Fixes"_s);
        row(R"({"zh": "", "en": "Fixes"})", {u"zh"_s}, u"Fixes"_s);
        row(R"({"en": "Fixes"})", {u"zh"_s}, u"Fixes"_s);
        row(R"({"zh": "修复"})", {u"en"_s}, u"修复"_s);
        row(R"({"zh": "修复", "en": ""})", {u"en"_s}, u""_s);
        row(R"({"zh": ""})", {u"zh"_s}, u""_s);
        row("{}", {u"zh"_s}, QString());
        row("null", {u"zh"_s}, QString());
    }
    void picksNotes() {
        QFETCH(QString, notes);
        QFETCH(QStringList, languages);
        QFETCH(QString, picked);
        const auto manifest =
            wire::decode<Manifest>(uR"({"version": "1", "download": {}, "notes": %1})"_s.arg(notes).toUtf8());
        const std::optional<QString> result = pickNotes(manifest.notes, languages);
        QCOMPARE(result.value_or(QString()), picked);
        QCOMPARE(result.has_value(), !picked.isNull());
    }

    void decodesManifests_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<bool>("accepted");
        const auto row = [](const QByteArray &json, bool accepted) {
            QTest::addRow("%s", json.constData()) << json << accepted;
        };
        row(R"({"version":"1.4.2","download":{}})", true);
        row(R"({"version":"","released_at":null,"download":{"macos":null},"notes":{},"more":[1]})", true);
        row(R"({"version":"1.4.2"})", false);
        row(R"({"version":"1.4.2","download":null})", false);
        row(R"({"version":1.4,"download":{}})", false);
        row(R"({"version":"1.4.2","download":{"macos":7}})", false);
        row(R"({"version":"1.4.2","download":{},"notes":"Fixes"})", false);
        row(R"({"version":"1.4.2","download":{},"released_at":20250101})", false);
        row(R"([{"version":"1.4.2","download":{}}])", false);
        row(R"({"version":"1.4.2","download":{}} and more)", false);
        row("{\"version\":\"\xff\",\"download\":{}}", false);
    }
    void decodesManifests() {
        QFETCH(QByteArray, json);
        QFETCH(bool, accepted);
        try {
            wire::decode<Manifest>(json);
            QVERIFY(accepted);
        } catch (const wire::DecodeError &) {
            QVERIFY(!accepted);
        }
    }

    void keepsEveryFieldOfAManifest() {
        const QByteArray json =
            R"({"version":"1.4.2","released_at":"2025-01-01","min_supported_version":"1.0",)"
            R"("download":{"macos":"https://a/b.dmg","linux_deb":"https://a/b.deb"},)"
            R"("notes":{"zh":"修复","en":"Fixes"}})";
        QCOMPARE(wire::encode(wire::decode<Manifest>(json)), json);
    }

    void looksForTheManifestOverHttps() {
        const QUrl address = manifestAddress();
        QCOMPARE(address.scheme(), u"https"_s);
        QVERIFY(!address.host().isEmpty());
        QCOMPARE(address.path(), u"/version.json"_s);
    }

    void namesPackages_data() {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("name"); // empty for none
        const auto row = [](const char *path, const QString &name) {
            QTest::addRow("%s", path) << u"https://host%1"_s.arg(QString::fromUtf8(path)) << name;
        };
        row("/pkg/app-2.0.dmg", u"app-2.0.dmg"_s);
        row("/pkg/app.dmg?token=a/b#c/d", u"app.dmg"_s);
        row("/a%20b.dmg", u"a b.dmg"_s);
        row("/a b.dmg", u"a b.dmg"_s);
        row("/%E5%8C%85.dmg", u"包.dmg"_s);
        row("/100%25.dmg", u"100%.dmg"_s);
        row("/%252e%252e", u"%2e%2e"_s); // decoded once only
        row("/..%5C..%5Capp", u"..\\..\\app"_s);
        row("", {});
        row("/", {});
        row("/pkg/", {});
        row("/pkg/.", {});
        row("/pkg/..", {});
        row("/pkg/%2e%2e", {});
        row("/pkg/..%2F..%2Fapp.dmg", {});
        row("/pkg/%2Fetc%2Fpasswd", {});
        row("/pkg/app%00.dmg", {});
        row("/pkg/app%0A.dmg", {});
        row("/pkg/app%7F.dmg", {});
        row("/pkg/app%C2%85.dmg", {});
        row("/pkg/app%FF.dmg", {});
        QTest::newRow("longest") << u"https://host/"_s + QString(255, u'a') << QString(255, u'a');
        QTest::newRow("too long") << u"https://host/"_s + QString(256, u'a') << QString();
        QTest::newRow("too long in bytes") << u"https://host/"_s + QString(86, u'包') << QString();
    }
    void namesPackages() {
        QFETCH(QString, address);
        QFETCH(QString, name);
        QCOMPARE(packageFileName(QUrl(address)).value_or(QString()), name);
    }
};

QTEST_APPLESS_MAIN(VersionTest)
#include "VersionTest.moc"
