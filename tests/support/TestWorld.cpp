#include "support/TestWorld.h"

#include <QFont>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace quorbit {

void useTestFonts() {
    qputenv("FONTCONFIG_FILE", FONTS_CONF);
}

void useLanguage(QLatin1String language) {
    static QTranslator translator;
    QCoreApplication::removeTranslator(&translator);
    if (!translator.load("quorbit_"_L1 + language, QLatin1String(TRANSLATIONS)) ||
        !QCoreApplication::installTranslator(&translator))
        qFatal("no string table for %s", language.data());
}

void useAppearance(const Appearance &appearance, double fontPoints) {
    QFont font(u"sans-serif"_s);
    font.setPointSizeF(fontPoints);
    QApplication::setFont(font);
    QApplication::setPalette(themePalette(appearance));
}

void addLooks(std::initializer_list<double> points) {
    QTest::addColumn<QLatin1String>("language");
    QTest::addColumn<double>("points");
    for (const QLatin1String language : {"en"_L1, "zh_Hans"_L1}) {
        for (const double size : points)
            QTest::addRow("%s at %.1f", language.data(), size) << language << size;
    }
}

void useLook() {
    QFETCH(const QLatin1String, language);
    QFETCH(const double, points);
    useLanguage(language);
    useAppearance({}, points);
}

} // namespace quorbit
