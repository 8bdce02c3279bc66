#include "support/TestWorld.h"

#include <QDir>
#include <QFont>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace quorbit {

void useTestFonts() {
    qputenv("FONTCONFIG_FILE", FONTS_CONF);
}

QStringList allLanguages() {
    QStringList languages;
    for (const QFileInfo &table : QDir(QStringLiteral(STRING_TABLES)).entryInfoList({u"quorbit_*.ts"_s}))
        languages << table.baseName().remove("quorbit_"_L1);
    return languages;
}

void useLanguage(const QString &language) {
    static QTranslator translator;
    QCoreApplication::removeTranslator(&translator);
    if (!translator.load("quorbit_"_L1 + language, QLatin1String(TRANSLATIONS)) ||
        !QCoreApplication::installTranslator(&translator))
        qFatal("no string table for %s", qPrintable(language));
}

void useAppearance(const ColorPreferences &colors, double fontPoints) {
    QFont font(u"sans-serif"_s);
    font.setPointSizeF(fontPoints);
    QApplication::setFont(font);
    QApplication::setPalette(themePalette(colors));
}

} // namespace quorbit
