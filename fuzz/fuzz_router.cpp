#include "FuzzSetting.h"
#include "ReplyFrom.h"
#include "api/Endpoints.h"
#include "api/KQHttpManager.h"

#include <QCoreApplication>

namespace {

constexpr int requestCount = static_cast<int>(Request::Count);

} // namespace

// The first byte chooses the endpoint, the rest is the body of its reply.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    static KQHttpManager manager;
    if (size == 0) {
        return 0;
    }
    const auto request = static_cast<Request>(data[0] % requestCount);
    if (request == Request::HotUpdate) {
        return 0; // has a target of its own
    }
    ReplyFrom reply(QUrl(QString::fromLatin1(endpointOf(request).path)));
    manager.dealJsonData(&reply, restOf(data, size));
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
