#include "api/LinkLog.h"

#include "base/TunnelMode.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <utility>

namespace {

QString protocolName(int vpnMode)
{
    const auto *const mode = std::find_if(std::begin(tunnelModes), std::end(tunnelModes),
        [vpnMode](const TunnelMode &row) { return row.number == vpnMode; });
    return QString::fromLatin1(mode == std::end(tunnelModes) ? "NotRecognized" : mode->linkLogName);
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
