#pragma once

#include <QStringList>
#include <QTranslator>

/// Shows every text as its key, and what is filled into it in brackets: "devices.unpair.message[Desk]".
class KeyTexts : public QTranslator {
public:
    bool isEmpty() const override { return false; }

    QString translate(const char * /*context*/, const char *key, const char * /*disambiguation*/,
                      int /*n*/) const override {
        static const QStringList filled{
            QStringLiteral("update.available.title"), QStringLiteral("devices.unpair.message"),
            QStringLiteral("kvm.status.controlled"), QStringLiteral("kvm.status.master_off"),
            QStringLiteral("kvm.master.peer_global")};
        const QString text = QString::fromUtf8(key);
        return filled.contains(text) ? text + QStringLiteral("[%1]") : text;
    }
};
