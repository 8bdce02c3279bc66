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

void useAppearance(const ColorPreferences &colors, double fontPoints) {
    QFont font(u"sans-serif"_s);
    font.setPointSizeF(fontPoints);
    QApplication::setFont(font);
    QApplication::setPalette(themePalette(colors));
}

} // namespace quorbit
