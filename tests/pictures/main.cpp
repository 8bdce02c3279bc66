// Draws every view in every state, language, appearance and scale: pictures --out DIR [--font POINTS]

#include "pictures/Picture.h"
#include "settings/TimeFormats.h"
#include "support/TestWorld.h"
#include "ui/ControlStyle.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

void draw(const Picture &picture, const TimeFormats &formats, const QString &file) {
    const std::unique_ptr<QWidget> view = picture.make(formats);
    view->setAttribute(Qt::WA_DontShowOnScreen);
    if (picture.size.isValid())
        view->resize(picture.size);
    view->show();
    QTest::qWait(40); // longer than any update waits
    if (picture.arrange) {
        picture.arrange(*view, formats);
        QTest::qWait(40);
    }
    for (const int scale : {1, 2}) {
        QImage image(view->size() * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        view->render(&image);
        if (const QString path = file.arg(scale); !image.save(path))
            qFatal("cannot write %s", qPrintable(path));
    }
}

} // namespace

int main(int argc, char **argv) {
    useTestFonts();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setStyle(new ControlStyle);

    QCommandLineParser arguments;
    const QCommandLineOption out(u"out"_s, u"The folder that the pictures are written to."_s, u"folder"_s);
    const QCommandLineOption font(u"font"_s, u"The size of the user's font."_s, u"points"_s, u"9"_s);
    arguments.addOptions({out, font});
    arguments.addHelpOption();
    arguments.process(app);
    if (!arguments.isSet(out))
        qFatal("--out needs a folder");
    const QDir folder(arguments.value(out));

    for (const auto &list :
         {panelPictures(), windowPictures(), kvmPictures(), devicesPictures(), aboutPictures()}) {
        if (!folder.mkpath(list.front().name.section(u'/', 0, 0)))
            qFatal("cannot make the folders in %s", qPrintable(folder.path()));
        for (const bool dark : {false, true}) {
            useAppearance({.dark = dark, .accent = {}}, arguments.value(font).toDouble());
            for (const QLatin1String language : {"en"_L1, "zh_Hans"_L1}) {
                useLanguage(language);
                const TimeFormats formats{QLocale(language)};
                const QString kind = (dark ? u"-dark-"_s : u"-light-"_s) + language + u"@%1x.png"_s;
                for (const Picture &picture : list)
                    draw(picture, formats, folder.filePath(picture.name + kind));
            }
        }
    }
    return 0;
}
