#include "Property.h"

#include "update/Manifest.h"
#include "update/Version.h"
#include "wire/Codec.h"

using namespace quorbit;

namespace {

void checkManifest(const QByteArray &json) {
    Manifest manifest;
    try {
        manifest = wire::decode<Manifest>(json);
    } catch (const wire::DecodeError &error) {
        HOLDS(error.what()[0] != '\0');
        return;
    }
    HOLDS(wire::decode<Manifest>(wire::encode(manifest)) == manifest);
    HOLDS(!version::compare(manifest.version, manifest.version));
    for (const QString &language : {QStringLiteral("zh-Hans"), QStringLiteral("en"), QString()}) {
        const auto notes = pickNotes(manifest.notes, {language});
        HOLDS(!notes || notes == manifest.notes->zh || notes == manifest.notes->en);
    }
}

/// Being newer is a strict weak order: what it makes of three versions never contradicts itself.
void checkOrder(const QString &a, const QString &b, const QString &c) {
    const auto newer = version::compare;
    const auto same = [&](const QString &left, const QString &right) {
        return !newer(left, right) && !newer(right, left);
    };
    HOLDS(!newer(a, a));
    HOLDS(!(newer(a, b) && newer(b, a)));
    HOLDS(!(newer(a, b) && newer(b, c)) || newer(a, c));
    HOLDS(!(same(a, b) && same(b, c)) || same(a, c));
    // What follows a hyphen and missing components do not count.
    if (!a.contains(u'-') && !a.isEmpty()) {
        HOLDS(same(a, a + QStringLiteral("-rc1")));
        HOLDS(same(a, a + QStringLiteral(".0")));
    }
}

} // namespace

/// Versions, each ended by a zero byte, or after an odd first byte a manifest.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    InputReader input(data, size);
    if (input.byte() % 2 == 1) {
        checkManifest(QByteArray(reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(size - 1)));
    } else {
        const QString a = QString::fromUtf8(input.line());
        const QString b = QString::fromUtf8(input.line());
        checkOrder(a, b, QString::fromUtf8(input.line()));
    }
    return 0;
}
