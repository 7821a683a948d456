#include "api/LinkLog.h"

#include <ctime>
#include <utility>

namespace {

QString protocolName(int vpnMode)
{
    static constexpr const char *names[] = {
        "Sarko-UDP", "Sarko-WSS", "Drive", "KCP", "OpenVPN(UDP)", "L2TP", "Vorn"};
    const bool known = vpnMode >= 1 && vpnMode <= static_cast<int>(std::size(names));
    return QString::fromLatin1(known ? names[vpnMode - 1] : "NotRecognized");
}

} // namespace

LinkLog::LinkLog()
    : LinkLog([] { return static_cast<qint64>(std::time(nullptr)); })
{
}

LinkLog::LinkLog(Clock clock)
    : m_clock(std::move(clock))
{
}

std::optional<LineLinkInfo> LinkLog::add(
    int serverId, const QString &status, const QString &startOrEnd, int vpnMode)
{
    currentLink.srvid = serverId;
    if (startOrEnd == QLatin1String("END") && currentLink.start_time != 0) {
        currentLink.status = status;
        currentLink.end_time = m_clock();
        linkLogQueue.append(std::exchange(currentLink, LineLinkInfo()));
        return linkLogUploading ? std::nullopt : head();
    }
    if (startOrEnd == QLatin1String("START")) {
        currentLink.start_time = m_clock();
        if (currentLink.start_time < 0) {
            currentLink.start_time = m_clock();
        }
        currentLink.protocol = protocolName(vpnMode);
    }
    return std::nullopt;
}

std::optional<LineLinkInfo> LinkLog::uploadAccepted()
{
    if (linkLogQueue.isEmpty()) {
        return std::nullopt;
    }
    linkLogQueue.removeFirst();
    if (linkLogQueue.isEmpty()) {
        linkLogUploading = false;
    }
    return head();
}

std::optional<LineLinkInfo> LinkLog::head() const
{
    return linkLogQueue.isEmpty() ? std::nullopt : std::make_optional(linkLogQueue.first());
}
