// What the portal's settings and the GTK settings files say together, and that the files are followed.

#include "platform/linux/desktop/DesktopPreferences.h"
#include "support/Row.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

const QString appearance = u"org.freedesktop.appearance"_s;
const QString gnome = u"org.gnome.desktop.interface"_s;

GtkSettings gtk(const QByteArray &entries) {
    GtkSettings settings;
    addGtkSettings(settings, "[Other]\ngtk-font-name=Wrong 50\n[Settings]\n" + entries);
    return settings;
}

} // namespace

class DesktopPreferencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void combines() {
        const char *dark = "gtk-application-prefer-dark-theme = 1";
        const struct {
            const char *name;
            QString group;
            const char *key;
            QVariant value;
            const char *files;
            const char *expected; ///< dark, contrast, still
        } rows[]{{"dark", appearance, "color-scheme", 1U, "", "dark"},
                 {"light over the file", appearance, "color-scheme", 2U, dark, ""},
                 {"dark by the file", appearance, "color-scheme", 0U, dark, "dark"},
                 {"wrong group", gnome, "contrast", 1U, "", ""},
                 {"contrast", appearance, "contrast", 1U, "", "contrast"},
                 {"contrast of GNOME", u"org.gnome.desktop.a11y.interface"_s, "high-contrast", true, "",
                  "contrast"},
                 {"contrast by theme", gnome, "gtk-theme", u"HighContrastInverse"_s, "", "contrast"},
                 {"contrast by the file", {}, "", {}, "gtk-theme-name=HighContrast", "contrast"},
                 {"reduced motion", appearance, "reduced-motion", 1U, "", "still"},
                 {"motion over the file", appearance, "reduced-motion", 0U, "gtk-enable-animations=0", ""},
                 {"no animations", gnome, "enable-animations", false, "gtk-enable-animations=true", "still"},
                 {"no animations of Plasma", u"org.kde.kdeglobals.KDE"_s, "AnimationDurationFactor", u"0"_s,
                  "", "still"},
                 {"nonsense in the file", {}, "", {}, "gtk-enable-animations=maybe\nno entry\n=", ""}};
        for (const auto &[name, group, key, value, files, expected] : rows) {
            const Row row(name);
            const PortalSettings portal{{group, {{QLatin1String(key), value}}}};
            const Appearance found = desktopPreferences(portal, gtk(files), false);
            QByteArray words = found.colors.dark ? "dark" : "";
            words += found.colors.highContrast ? "contrast" : "";
            words += found.reducedMotion ? "still" : "";
            QCOMPARE(words, expected);
        }
    }

    void readsFonts() {
        const struct {
            QString text;
            QString family = {};
            double points = -1;
            int pixels = -1;
        } rows[]{{.text = u"Noto Sans,  10"_s, .family = u"Noto Sans"_s, .points = 10},
                 {.text = u"Ubuntu Semi-Bold Italic 10.5"_s, .family = u"Ubuntu"_s, .points = 10.5},
                 {.text = u"Source Sans 3 Light 12 @wght=300"_s, .family = u"Source Sans 3"_s, .points = 12},
                 {.text = u"Inter 16px"_s, .family = u"Inter"_s, .pixels = 16},
                 {.text = u"Sans"_s},
                 {.text = u"Sans 0"_s},
                 {.text = u"Sans 9999"_s},
                 {.text = u"12"_s}};
        for (const auto &[text, family, points, pixels] : rows) {
            const Row row(text.toUtf8());
            const auto font = desktopPreferences({}, gtk("gtk-font-name=" + text.toUtf8()), false).font;
            QCOMPARE(font ? font->family() : QString(), family);
            if (font) {
                QCOMPARE(font->pointSizeF(), points);
                QCOMPARE(font->pixelSize(), pixels);
            }
        }
    }

    void ranksFontsAndScales() {
        QFont noto(u"Noto Sans"_s);
        noto.setPointSize(13);
        PortalSettings portal{{gnome, {{u"font-name"_s, u"Inter 10"_s}, {u"text-scaling-factor"_s, 1.25}}}};
        const auto found = [&] {
            return desktopPreferences(portal, gtk("gtk-font-name=Cantarell 11"), false);
        };
        QCOMPARE(found().font->family(), u"Inter"_s);
        QCOMPARE(found().textScale, 1.25);
        // On Plasma, GNOME's font is one that nobody chose.
        portal[u"org.kde.kdeglobals.General"_s] = {{u"font"_s, noto.toString()}};
        portal[gnome][u"text-scaling-factor"_s] = 40.0;
        QCOMPARE(found().font->family(), noto.family());
        QCOMPARE(found().textScale, 1.0);
    }

    void followsFilesThatComeAndAreReplaced() {
        const QTemporaryDir top;
        const QDir folder(top.path());
        GtkSettingsFiles files(top.path());
        files.start();
        for (const char *version : {"gtk-3.0", "gtk-4.0"}) {
            QVERIFY(folder.mkdir(QLatin1String(version)));
            QTest::qWait(50);
            for (const char *font : {"Sans 14", "Sans 16"}) {
                // Another file takes the name, as settings programs do it.
                const Row row(QByteArray(version) + ' ' + font);
                const QString name = folder.filePath(QLatin1String(version) + u"/settings.ini"_s);
                QFile next(name + u".new"_s);
                QVERIFY(next.open(QIODevice::WriteOnly));
                next.write(QByteArray("[Settings]\ngtk-font-name=") + version + font);
                next.close();
                QFile::remove(name);
                QVERIFY(next.rename(name));
                QTRY_COMPARE(files.current().font.value_or(QString()),
                             QLatin1String(version) + QLatin1String(font));
            }
        }
    }
};

QTEST_MAIN(DesktopPreferencesTest)
#include "DesktopPreferencesTest.moc"
