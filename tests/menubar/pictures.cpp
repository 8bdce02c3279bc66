// Draws the panel in every state, language, appearance and scale: panel_pictures --out DIR [--font POINTS]

#include "menubar/HistoryRow.h"
#include "menubar/MenuBarView.h"
#include "menubar/PanelStates.h"
#include "menubar/TestWorld.h"
#include "ui/ControlStyle.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QEnterEvent>
#include <QPainter>
#include <QPainterPath>

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

constexpr int backdropMargin = 16;
constexpr double cornerRadius = 10;

// The panel as its window shows it, with rounded corners, on a plain backdrop.
QImage picture(QWidget &panel, bool dark, int scale) {
    const QSize whole = panel.size() + 2 * QSize(backdropMargin, backdropMargin);
    QImage image(whole * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(dark ? QColor(0x3b414e) : QColor(0x8b94a6));
    QImage content(panel.size() * scale, QImage::Format_ARGB32_Premultiplied);
    content.setDevicePixelRatio(scale);
    panel.render(&content);

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame(QPointF(backdropMargin, backdropMargin), QSizeF(panel.size()));
    QPainterPath shape;
    shape.addRoundedRect(frame, cornerRadius, cornerRadius);
    QBrush fill(content);
    QTransform place;
    place.translate(frame.x(), frame.y());
    place.scale(1.0 / scale, 1.0 / scale);
    content.setDevicePixelRatio(1);
    fill.setTextureImage(content);
    fill.setTransform(place);
    painter.fillPath(shape, fill);
    return image;
}

void hover(HistoryRow &row) {
    QEnterEvent enter{QPointF(), QPointF(), QPointF()};
    QCoreApplication::sendEvent(&row, &enter);
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
    const QDir folder(arguments.value(out));
    if (!arguments.isSet(out) || !folder.mkpath(u"."_s))
        qFatal("--out needs a folder that can be written to");

    for (const bool dark : {false, true}) {
        useAppearance({.dark = dark, .accent = {}}, arguments.value(font).toDouble());
        for (const QLatin1String language : {"en"_L1, "zh_Hans"_L1}) {
            useLanguage(language);
            for (const PanelState &state : panelStates()) {
                MenuBarView panel;
                panel.render(state.model());
                panel.setAttribute(Qt::WA_DontShowOnScreen);
                panel.show();
                if (state.name == "transfer"_L1)
                    hover(*panel.findChildren<HistoryRow *>().at(1));
                for (const int scale : {1, 2}) {
                    const QString name = u"%1-%2-%3@%4x.png"_s.arg(state.name, dark ? "dark"_L1 : "light"_L1,
                                                                   language, QString::number(scale));
                    if (!picture(panel, dark, scale).save(folder.filePath(name)))
                        qFatal("cannot write %s", qPrintable(folder.filePath(name)));
                }
            }
        }
    }
    return 0;
}
