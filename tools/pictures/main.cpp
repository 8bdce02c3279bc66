// Shows every view in every state and language, and fails when one of the program's own texts is none or does
// not fit. pictures --out DIR [POINTS] leaves pictures of them instead, light and dark and at two scales.

#include "Picture.h"
#include "TextFaults.h"
#include "settings/devices/DevicesTab.h"
#include "support/TestWorld.h"
#include "support/ViewChecks.h"
#include "ui/form/Form.h"
#include "ui/look/ControlStyle.h"
#include "ui/text/SelectableText.h"
#include "wording/TimeFormats.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QDir>

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

constexpr int leastWidth = 560;  // that the user can make the window
constexpr double veryLarge = 20; // points, from which on texts may be cut
constexpr int smallScreen = 800; // the width of a window then

bool fits(const QWidget &view, const QWidget &control, const OwnTexts &ownTexts) {
    const auto *label = qobject_cast<const TextLabel *>(&control);
    const bool wraps = label && label->hasHeightForWidth();
    const int height = wraps ? label->heightForWidth(label->width()) : control.sizeHint().height();
    const bool mayBeCut = label && (wraps || !ownTexts.contains(label->text()));
    if (control.height() < height || (!mayBeCut && control.width() < control.sizeHint().width()))
        return false;
    const QRect place(control.mapTo(&view, QPoint()), control.size());
    const bool scrolls = view.findChild<QAbstractScrollArea *>() != nullptr;
    return place.left() >= 0 && place.right() < view.width() && (scrolls || view.rect().contains(place));
}

/// Whether a text runs into the edge of its control, where a sign should stand for what is cut.
bool runsIntoEdge(QWidget &control) {
    const QImage image = control.grab().toImage();
    for (const int x : {0, image.width() - 1})
        for (int y = image.height() / 3; y < image.height() - 8; ++y)
            if (image.pixel(x, y) != image.pixel(x, image.height() / 3))
                return true;
    return false;
}

/// The first that is cut without a sign, sticks out or takes a list's room at a very large font.
QString misfitWhenVeryLarge(const QWidget &view) {
    const auto *devices = view.findChild<DevicesTab *>();
    const auto *list = devices ? devices->findChild<Form *>() : nullptr;
    if (list && list->isVisible() && (devices->height() - list->height()) * 4 > view.height())
        return u"what is below the list"_s;
    for (QWidget *control : view.findChildren<QWidget *>()) {
        const QRect place(control->mapTo(&view, QPoint()), control->size());
        const bool isCutText = control->width() < control->sizeHint().width() &&
                               (qobject_cast<SelectableText *>(control) ||
                                test::accessible(control)->role() == QAccessible::PageTab);
        if (control->isVisible() &&
            (place.left() < 0 || place.right() >= view.width() || (isCutText && runsIntoEdge(*control))))
            return QLatin1String(control->metaObject()->className()) + u' ' + test::nameOf(control) +
                   u" %1..%2"_s.arg(place.left()).arg(place.right());
    }
    return {};
}

/// The first text or control that is cut or sticks out, or nothing.
QString misfit(const QWidget &view, const OwnTexts &ownTexts) {
    for (QWidget *control : view.findChildren<QWidget *>()) {
        if (test::accessible(control)->role() == QAccessible::PageTab)
            continue; // tabs give up the space around their titles
        const bool isWhole = dynamic_cast<AccessibleControl *>(control) &&
                             test::accessible(control)->childCount() == 0 &&
                             !control->findChild<TextLabel *>();
        if (control->isVisible() && isWhole && !fits(view, *control, ownTexts))
            return QLatin1String(control->metaObject()->className()) + u' ' + test::nameOf(control);
    }
    return {};
}

/// Lets every update that is due come to its end.
void settle() {
    for (int round = 0; round < 20; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

std::unique_ptr<QWidget> shown(const Picture &picture, const TimeFormats &formats, QSize size) {
    std::unique_ptr<QWidget> view = picture.make(formats);
    view->setAttribute(Qt::WA_DontShowOnScreen);
    if (size.isValid())
        view->resize(size);
    view->show();
    settle();
    if (picture.arrange) {
        picture.arrange(*view, formats);
        settle();
    }
    return view;
}

void draw(QWidget &view, const QString &file) {
    for (const int scale : {1, 2}) {
        QImage image(view.size() * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        view.render(&image);
        const QString path = file.arg(scale);
        if (!QDir().mkpath(path.section(u'/', 0, -2)) || !image.save(path))
            qFatal("cannot write %s", qPrintable(path));
    }
}

} // namespace

int main(int argc, char **argv) {
    useTestFonts();
    QApplication app(argc, argv);
    QApplication::setStyle(new ControlStyle);

    const QStringList arguments = QCoreApplication::arguments();
    const bool draws = arguments.size() >= 3 && arguments[1] == "--out"_L1;
    const double drawn = arguments.size() == 4 ? arguments[3].toDouble() : 9;
    const QList<double> sizes = draws ? QList{drawn} : QList{9.0, 12.5, 16.0, 20.0, 30.0};
    const QList<bool> darknesses = draws ? QList{false, true} : QList{false};

    int faults = 0;
    const auto take = [&](const Picture &picture, double points, bool dark, const QString &language) {
        const auto fault = [&](const QString &what) {
            ++faults;
            qWarning("%s, %s at %g points: %s", qPrintable(picture.name), qPrintable(language), points,
                     qPrintable(what));
        };
        useAppearance({.dark = dark, .accent = {}}, points);
        useLanguage(language);
        OwnTexts ownTexts;
        QCoreApplication::installTranslator(&ownTexts);
        const TimeFormats formats{QLocale(language)};
        QSize size = picture.size;
        const bool isVeryLarge = points >= veryLarge;
        if (!draws && size.isValid())
            size.setWidth(isVeryLarge ? smallScreen : leastWidth);
        const auto view = shown(picture, formats, size);
        const QString kind = (dark ? u"-dark-"_s : u"-light-"_s) + language + u"@%1x.png"_s;
        if (draws)
            return draw(*view, arguments[2] + u'/' + picture.name + kind);
        if (points == sizes.first())
            for (const QString &what : textFaults(*test::accessible(view.get()), ownTexts))
                fault(what);
        if (const QString which = isVeryLarge ? misfitWhenVeryLarge(*view) : misfit(*view, ownTexts);
            !which.isEmpty() || (size.isValid() && view->width() != size.width()))
            fault(which + u" does not fit"_s);
    };
    for (const Picture &picture : allPictures())
        for (const double points : sizes)
            for (const bool dark : darknesses)
                for (const QString &language : allLanguages())
                    take(picture, points, dark, language);
    return faults == 0 ? 0 : 1;
}
