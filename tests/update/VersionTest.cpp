#include "update/Version.h"
#include "support/Row.h"
#include "update/PackageDownload.h"

#include <QTest>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

class VersionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parses() {
        using Components = std::vector<qint64>;
        const std::pair<const char *, Components> rows[]{
            {"1.4.2-beta.3", {1, 4, 2}},
            {"-rc1", {0}},
            {"--1.2-beta", {1, 2}},
            {"", {}},
            {"1..2.", {1, 2}},
            {"v1.2", {0, 2}},
            {"2b.+7.0x1", {0, 7, 0}},
            {"1. 2.3 ", {1, 0, 0}},
            {"+.++1.+-1", {0, 0, 0}},
            {"9223372036854775807.9223372036854775808", {std::numeric_limits<qint64>::max(), 0}}};
        for (const auto &[text, components] : rows) {
            const Row row(text);
            QCOMPARE(version::parse(QString::fromUtf8(text)), components);
        }
    }

    void compares() {
        const struct {
            QString left, right;
            bool newer = false, older = false;
        } rows[]{{.left = u"1.10.0"_s, .right = u"1.9.9"_s, .newer = true},
                 {.left = u"1.2.1"_s, .right = u"1.2"_s, .newer = true},
                 {.left = u"1.2"_s, .right = u"1.2.0"_s},
                 {.left = u"2.0.0-beta"_s, .right = u"2.0.0"_s},
                 {.left = u"v2.0"_s, .right = u"1.0"_s, .older = true},
                 {.left = QString(), .right = u"0.0.0"_s}};
        for (const auto &[left, right, newer, older] : rows) {
            const Row row(left.toUtf8() + " and " + right.toUtf8());
            QCOMPARE(version::compare(left, right), newer);
            QCOMPARE(version::compare(right, left), older);
        }
    }

    void picksNotes() {
        const QByteArray both = R"({"zh": "修复", "en": "Fixes"})";
        const struct {
            QByteArray notes;
            QStringList languages;
            std::optional<QString> picked;
        } rows[]{{both, {u"zh-Hans"_s, u"en"_s}, u"修复"_s},
                 {both, {u"en"_s, u"zh-Hans"_s}, u"Fixes"_s},
                 {R"({"zh": "", "en": "Fixes"})", {u"zh"_s}, u"Fixes"_s},
                 {R"({"zh": "修复"})", {u"en"_s}, u"修复"_s},
                 {R"({"zh": "修复", "en": ""})", {u"en"_s}, u""_s},
                 {"null", {u"zh"_s}, {}}};
        for (const auto &[notes, languages, picked] : rows) {
            const Row row(notes + " in " + languages.join(u' ').toUtf8());
            const auto manifest =
                wire::decode<Manifest>(R"({"version":"1","download":{},"notes":)" + notes + '}');
            QCOMPARE(pickNotes(manifest.notes, languages), picked);
        }
    }

    void decodesManifests() {
        const QByteArray whole =
            R"({"version":"1.4.2","released_at":"2025-01-01","min_supported_version":"1.0",)"
            R"("download":{"macos":"https://a/b.dmg","linux_deb":"https://a/b.deb"},)"
            R"("notes":{"zh":"修复","en":"Fixes"}})";
        QCOMPARE(wire::encode(wire::decode<Manifest>(whole)), whole);
    }

    void namesPackages() {
        const QString longest(255, u'a');
        const std::pair<QString, std::optional<QString>> rows[]{
            {u"/pkg/app.dmg?token=a/b#c/d"_s, u"app.dmg"_s},
            {u"/%E5%8C%85%20b.dmg"_s, u"包 b.dmg"_s},
            {u"/%252e%252e"_s, u"%2e%2e"_s}, // decoded once only
            {u'/' + longest, longest},
            {u"/包"_s + longest.chopped(1), {}}, // too long in bytes
            {{}, {}},
            {u"/pkg/"_s, {}},
            {u"/pkg/%2e%2e"_s, {}},
            {u"/.bashrc"_s, {}},
            {u"/pkg/..%2F..%2Fapp.dmg"_s, {}},
            {u"/pkg/app%00.dmg"_s, {}},
            {u"/pkg/app%0A.dmg"_s, {}},
            {u"/gpj.%E2%80%AEdmg"_s, {}},
            {u"/pkg/app%FF.dmg"_s, {}}};
        for (const auto &[path, name] : rows) {
            const Row row(path.toUtf8());
            QCOMPARE(packageFileName(QUrl(u"https://host"_s + path)), name);
        }
    }
};

QTEST_APPLESS_MAIN(VersionTest)
#include "VersionTest.moc"
