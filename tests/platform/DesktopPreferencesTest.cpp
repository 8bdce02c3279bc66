// What the portal's settings and the GTK settings files say together, and that the files are followed.

#include "platform/linux/DesktopPreferences.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace quorbit;

namespace {

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");

GtkSettings gtk(const char *entries) {
    GtkSettings settings;
    addGtkSettings(settings, QByteArray("[Other]\ngtk-font-name=Wrong 50\n[Settings]\n") + entries);
    return settings;
}

} // namespace

Q_DECLARE_METATYPE(quorbit::GtkSettings)

class DesktopPreferencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void combines_data() {
        QTest::addColumn<PortalSettings>("portal");
        QTest::addColumn<GtkSettings>("files");
        QTest::addColumn<QString>("expected"); // dark, contrast, still
        const auto row = [](const char *name, const QString &group, const char *key, const QVariant &value,
                            const char *files, const char *expected) {
            QTest::newRow(name) << PortalSettings{{group, {{QString::fromLatin1(key), value}}}} << gtk(files)
                                << QString::fromLatin1(expected);
        };
        const char *dark = "gtk-application-prefer-dark-theme = 1";
        row("nothing", {}, "", {}, "", "");
        row("dark", appearance, "color-scheme", 1U, "", "dark");
        row("light over the file", appearance, "color-scheme", 2U, dark, "");
        row("no preference", appearance, "color-scheme", 0U, "", "");
        row("dark by the file", appearance, "color-scheme", 0U, dark, "dark");
        row("wrong type", appearance, "color-scheme", QStringLiteral("dark"), "", "");
        row("wrong group", gnome, "contrast", 1U, "", "");
        row("contrast", appearance, "contrast", 1U, "", "contrast");
        row("contrast of GNOME", QStringLiteral("org.gnome.desktop.a11y.interface"), "high-contrast", true,
            "", "contrast");
        row("contrast by theme", gnome, "gtk-theme", QStringLiteral("HighContrastInverse"), "", "contrast");
        row("contrast by the file", {}, "", {}, "gtk-theme-name=HighContrast", "contrast");
        row("reduced motion", appearance, "reduced-motion", 1U, "", "still");
        row("motion over the file", appearance, "reduced-motion", 0U, "gtk-enable-animations=0", "");
        row("no animations", gnome, "enable-animations", false, "gtk-enable-animations=true", "still");
        row("no animations of Plasma", QStringLiteral("org.kde.kdeglobals.KDE"), "AnimationDurationFactor",
            QStringLiteral("0"), "", "still");
        row("no animations by the file", {}, "", {}, "gtk-enable-animations=false", "still");
        row("nonsense in the file", {}, "", {}, "gtk-enable-animations=maybe\nno entry\n=", "");
    }
    void combines() {
        QFETCH(PortalSettings, portal);
        QFETCH(GtkSettings, files);
        const DesktopPreferences found = desktopPreferences(portal, files, false);
        QStringList words;
        for (const auto &[is, word] :
             {std::pair(found.dark, "dark"), std::pair(found.highContrast, "contrast"),
              std::pair(found.reducedMotion, "still")}) {
            if (is)
                words << QString::fromLatin1(word);
        }
        QTEST(words.join(QLatin1Char(' ')), "expected");
    }

    void readsFonts_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("family");
        QTest::addColumn<double>("points");
        QTest::addColumn<int>("pixels");
        const auto row = [](const char *text, const char *family, double points, int pixels = -1) {
            QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(family) << points
                                << pixels;
        };
        row("Cantarell 11", "Cantarell", 11);
        row("Noto Sans,  10", "Noto Sans", 10);
        row("Ubuntu Semi-Bold Italic 10.5", "Ubuntu", 10.5);
        row("Roboto Condensed 9", "Roboto Condensed", 9);
        row("Source Sans 3 Light 12 @wght=300", "Source Sans 3", 12);
        row("Inter 16px", "Inter", -1, 16);
        for (const char *text : {"Sans", "", "Sans 0", "Sans 9999", "12"})
            row(text, "", 0);
    }
    void readsFonts() {
        QFETCH(QString, text);
        QFETCH(QString, family);
        const PortalSettings portal{{gnome, {{QStringLiteral("font-name"), text}}}};
        GtkSettings files;
        for (const PortalSettings &settings : {portal, PortalSettings()}) {
            const auto font = desktopPreferences(settings, files, false).font;
            QCOMPARE(font.has_value(), !family.isEmpty());
            if (font) {
                QCOMPARE(font->family(), family);
                QTEST(font->pointSizeF(), "points");
                QTEST(font->pixelSize(), "pixels");
            }
            files.font = text; // the same from the file, without a portal
        }
    }

    void ranksFontsAndScales() {
        QFont noto(QStringLiteral("Noto Sans"));
        noto.setPointSize(13);
        PortalSettings portal{{gnome,
                               {{QStringLiteral("font-name"), QStringLiteral("Inter 10")},
                                {QStringLiteral("text-scaling-factor"), 1.25}}}};
        const GtkSettings files = gtk("gtk-font-name=Cantarell 11");
        QCOMPARE(desktopPreferences(portal, files, false).font->family(), QStringLiteral("Inter"));
        QCOMPARE(desktopPreferences(portal, files, false).textScale, 1.25);
        // On Plasma, GNOME's font is one that nobody chose.
        portal[QStringLiteral("org.kde.kdeglobals.General")] = {{QStringLiteral("font"), noto.toString()}};
        portal[gnome][QStringLiteral("text-scaling-factor")] = 40.0;
        QCOMPARE(desktopPreferences(portal, files, false).font->family(), noto.family());
        QCOMPARE(desktopPreferences(portal, files, false).textScale, 1.0);
    }

    void followsTheFiles() {
        const QTemporaryDir folder;
        GtkSettingsFiles files(folder.path());
        QSignalSpy changed(&files, &GtkSettingsFiles::changed);
        files.start();
        const auto write = [&](const char *name, const QByteArray &text) {
            QFile file(folder.filePath(QString::fromLatin1(name)));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(text);
        };
        const auto font = [&] { return files.current().font.value_or(QString()); };

        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("gtk-3.0")));
        QTest::qWait(50);
        write("gtk-3.0/settings.ini", "[Settings]\ngtk-font-name=Sans 10\ngtk-enable-animations=0\n");
        QTRY_COMPARE(font(), QStringLiteral("Sans 10"));
        // Written anew in place, and replaced by another file, as settings programs do both.
        write("gtk-3.0/settings.ini", "[Settings]\ngtk-font-name=Sans 12\ngtk-enable-animations=0\n");
        QTRY_COMPARE(font(), QStringLiteral("Sans 12"));
        for (const char *text : {"Sans 14", "Sans 16"}) {
            write("gtk-3.0/new", QByteArray("[Settings]\ngtk-enable-animations=0\ngtk-font-name=") + text);
            QVERIFY(QFile::remove(folder.filePath(QStringLiteral("gtk-3.0/settings.ini"))));
            QVERIFY(QFile::rename(folder.filePath(QStringLiteral("gtk-3.0/new")),
                                  folder.filePath(QStringLiteral("gtk-3.0/settings.ini"))));
            QTRY_COMPARE(font(), QString::fromLatin1(text));
        }
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("gtk-4.0")));
        QTest::qWait(50);
        write("gtk-4.0/settings.ini", "[Settings]\ngtk-font-name=Sans 20\n");
        QTRY_COMPARE(font(), QStringLiteral("Sans 20"));
        QCOMPARE(files.current().animations, std::optional(false));
        QVERIFY(changed.count() >= 5);
    }
};

QTEST_MAIN(DesktopPreferencesTest)
#include "DesktopPreferencesTest.moc"
