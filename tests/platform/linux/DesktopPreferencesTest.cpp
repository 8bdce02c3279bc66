// What the portal's settings and the GTK settings files say together, and that the files are followed.

#include "platform/linux/desktop/DesktopPreferences.h"
#include "support/Row.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

const QString appearance = u"org.freedesktop.appearance"_s;
const QString gnome = u"org.gnome.desktop.interface"_s;

GtkSettings gtk(const char *entries) {
    GtkSettings settings;
    addGtkSettings(settings, QByteArray("[Other]\ngtk-font-name=Wrong 50\n[Settings]\n") + entries);
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
            double points = 0;
            int pixels = -1;
        } rows[]{{u"Noto Sans,  10"_s, u"Noto Sans"_s, 10},
                 {u"Ubuntu Semi-Bold Italic 10.5"_s, u"Ubuntu"_s, 10.5},
                 {u"Source Sans 3 Light 12 @wght=300"_s, u"Source Sans 3"_s, 12},
                 {u"Inter 16px"_s, u"Inter"_s, -1, 16},
                 {u"Sans"_s},
                 {u"Sans 0"_s},
                 {u"Sans 9999"_s},
                 {u"12"_s}};
        for (const auto &[text, family, points, pixels] : rows) {
            const Row row(text.toUtf8());
            GtkSettings files;
            files.font = text; // the same by the portal and by the file
            const PortalSettings portal{{gnome, {{u"font-name"_s, text}}}};
            for (const auto &font :
                 {desktopPreferences(portal, {}, false).font, desktopPreferences({}, files, false).font}) {
                QCOMPARE(font.has_value(), !family.isEmpty());
                if (font) {
                    QCOMPARE(font->family(), family);
                    QCOMPARE(font->pointSizeF(), points);
                    QCOMPARE(font->pixelSize(), pixels);
                }
            }
        }
    }

    void ranksFontsAndScales() {
        QFont noto(u"Noto Sans"_s);
        noto.setPointSize(13);
        PortalSettings portal{{gnome, {{u"font-name"_s, u"Inter 10"_s}, {u"text-scaling-factor"_s, 1.25}}}};
        const GtkSettings files = gtk("gtk-font-name=Cantarell 11");
        QCOMPARE(desktopPreferences(portal, files, false).font->family(), u"Inter"_s);
        QCOMPARE(desktopPreferences(portal, files, false).textScale, 1.25);
        // On Plasma, GNOME's font is one that nobody chose.
        portal[u"org.kde.kdeglobals.General"_s] = {{u"font"_s, noto.toString()}};
        portal[gnome][u"text-scaling-factor"_s] = 40.0;
        QCOMPARE(desktopPreferences(portal, files, false).font->family(), noto.family());
        QCOMPARE(desktopPreferences(portal, files, false).textScale, 1.0);
    }

    void followsTheFiles() {
        const QTemporaryDir folder;
        GtkSettingsFiles files(folder.path());
        QSignalSpy changed(&files, &GtkSettingsFiles::changed);
        files.start();
        const auto write = [&folder](const QString &name, const QByteArray &text) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(text);
        };
        const auto font = [&] { return files.current().font.value_or(QString()); };
        QDir folders(folder.path());

        for (const auto &[version, text] :
             {std::pair("gtk-3.0", "Sans 10"), std::pair("gtk-4.0", "Sans 20")}) {
            const QString place = QLatin1String(version);
            QVERIFY(folders.mkdir(place));
            QTest::qWait(50);
            write(place + u"/settings.ini"_s, "[Settings]\ngtk-font-name=" + QByteArray(text));
            QTRY_COMPARE(font(), QLatin1String(text));
        }
        // Replaced by another file, as settings programs do.
        for (const char *text : {"Sans 14", "Sans 16"}) {
            write(u"gtk-4.0/new"_s, "[Settings]\ngtk-font-name=" + QByteArray(text));
            QVERIFY(folders.remove(u"gtk-4.0/settings.ini"_s) &&
                    folders.rename(u"gtk-4.0/new"_s, u"gtk-4.0/settings.ini"_s));
            QTRY_COMPARE(font(), QLatin1String(text));
        }
        // What the newer file does not say, the older one does.
        write(u"gtk-3.0/settings.ini"_s, "[Settings]\ngtk-enable-animations=0\n");
        QTRY_COMPARE(files.current().animations, std::optional(false));
        QCOMPARE(font(), u"Sans 16"_s);
        QVERIFY(changed.count() >= 4);
    }
};

QTEST_MAIN(DesktopPreferencesTest)
#include "DesktopPreferencesTest.moc"
