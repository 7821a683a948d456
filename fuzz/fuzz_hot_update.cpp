#include "FuzzSetting.h"
#include "api/KQHttpManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonDocument>

namespace {

// The web is this machine, at a port where nobody listens.
QString atHome(const QString &address)
{
    QUrl url(address);
    if (!FileDownload::isAllowed(url)) {
        return address;
    }
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(1);
    return url.toString();
}

} // namespace

// The input is the reply's "data". Whatever it says, at most the two programs are written,
// and they come from the web.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    static KQHttpManager manager;
    QJsonObject details = QJsonDocument::fromJson(
        QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)))
                              .object();
    const QJsonValue url = details.value(QLatin1String("url"));
    if (url.isString()) {
        details.insert(QStringLiteral("url"), atHome(url.toString()));
    }
    QJsonObject reply{{QStringLiteral("data"), details}};
    manager.dealHotUpdate(reply);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const bool isWeb =
        url.toString().trimmed().startsWith(QLatin1String("http"), Qt::CaseInsensitive);
    const QStringList written = QDir().entryList(QDir::Files);
    for (const QString &name : written) {
        if (!isWeb
            || (name != QLatin1String("VORNTemp") && name != QLatin1String("sarko2linuxTemp"))) {
            __builtin_trap();
        }
        QFile::remove(name);
    }
    return 0;
}
