// Shows every view in every state and language, and fails when one of the program's own texts does not fit.
// pictures --out DIR [POINTS] leaves pictures of them instead, light and dark and at two scales.

#include "Picture.h"
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
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

constexpr int leastWidth = 560;  // that the user can make the window
constexpr double veryLarge = 20; // points, from which on texts may be cut
constexpr int smallScreen = 800; // the width of a window then
constexpr int settleTime = 40;   // ms, longer than any update waits

/// Knows the program's own texts, all that were asked for. Other texts are names that others gave, which may
/// be cut.
class OwnTexts final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char * /*context*/, const char *key, const char * /*disambiguation*/,
                      int /*n*/) const override {
        keys_.insert(key);
        return {}; // the next translator has the text
    }
    bool contains(const QString &text) const {
        const QSet<QByteArray> keys = keys_;
        return std::any_of(keys.begin(), keys.end(),
                           [&](auto &key) { return qtTrId(key.constData()) == text; });
    }

private:
    mutable QSet<QByteArray> keys_;
};

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

/// The first that is cut without a sign, sticks out or leaves the list no room at a very large font.
QString misfitWhenVeryLarge(const QWidget &view) {
    const auto *list = view.findChild<Form *>();
    if (qobject_cast<const DevicesTab *>(&view) && list->isVisible() &&
        list->height() * 10 < view.height() * 7)
        return u"the list"_s;
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

std::unique_ptr<QWidget> shown(const Picture &picture, const TimeFormats &formats, QSize size) {
    std::unique_ptr<QWidget> view = picture.make(formats);
    view->setAttribute(Qt::WA_DontShowOnScreen);
    if (size.isValid())
        view->resize(size);
    view->show();
    QTest::qWait(settleTime);
    if (picture.arrange) {
        picture.arrange(*view, formats);
        QTest::qWait(settleTime);
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

    int misfits = 0;
    const auto take = [&](const Picture &picture, double points, bool dark, const QString &language) {
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
        if (const QString which = isVeryLarge ? misfitWhenVeryLarge(*view) : misfit(*view, ownTexts);
            !which.isEmpty() || (size.isValid() && view->width() != size.width())) {
            ++misfits;
            qWarning("%s, %s at %g points: %s does not fit", qPrintable(picture.name), qPrintable(language),
                     points, qPrintable(which));
        }
    };
    for (const Picture &picture : allPictures())
        for (const double points : sizes)
            for (const bool dark : darknesses)
                for (const QString &language : allLanguages())
                    take(picture, points, dark, language);
    return misfits == 0 ? 0 : 1;
}
