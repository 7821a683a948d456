#include "FuzzSetting.h"
#include "uninstaller/Removal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

void put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        __builtin_trap();
    }
}

} // namespace

// A zero byte ends the manifest, the next one the manifest of the version before; what is left is
// the menu entry. Whatever they say, the neighbours stay.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const int first = input.indexOf('\0');
    const int second = first < 0 ? -1 : input.indexOf('\0', first + 1);

    const QDir here;
    here.mkpath(QStringLiteral("opt/VornVPN/lib/deep"));
    here.mkpath(QStringLiteral("other"));
    put(QStringLiteral("other/neighbour"), "x");
    put(QStringLiteral("opt/VornVPN/VORN"), "x");
    put(QStringLiteral("opt/VornVPN/lib/deep/a"), "x");
    QFile::link(QStringLiteral("../../../other"), QStringLiteral("opt/VornVPN/lib/out"));
    put(QStringLiteral("opt/VornVPN/manifest.txt"), input.left(first));
    if (first >= 0) {
        put(QStringLiteral("opt/VornVPN/manifest.old.txt"),
            input.mid(first + 1, second - first - 1));
        put(QStringLiteral("Vorn.desktop"), second < 0 ? QByteArray() : input.mid(second + 1));
    }

    const Removal removal(QStringLiteral("opt/VornVPN"), {QStringLiteral("Vorn.desktop")});
    int told = 0;
    removal.run([&told](int percentage) {
        if (percentage <= told || percentage >= 100) {
            __builtin_trap();
        }
        told = percentage;
    });
    const QFileInfo link(QStringLiteral("opt/VornVPN/lib/out"));
    if (!QFile::exists(QStringLiteral("other/neighbour")) || !link.isSymLink()
        || QFile::exists(QStringLiteral("opt/VornVPN/manifest.txt"))) {
        __builtin_trap();
    }
    QDir(QStringLiteral("opt")).removeRecursively();
    QFile::remove(QStringLiteral("Vorn.desktop"));
    return 0;
}
