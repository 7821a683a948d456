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
        linkLogQueue.append({++m_lastNumber, std::exchange(currentLink, LineLinkInfo())});
        return linkLogUploading ? std::nullopt : headToSend();
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

LinkLog::Number LinkLog::uploadStarted(const LineLinkInfo &record)
{
    const auto queued = std::find_if(
        linkLogQueue.cbegin(), linkLogQueue.cend(), [this, &record](const Entry &entry) {
            return entry.record == record && !isOnWire(entry.number);
        });
    const Number number = queued == linkLogQueue.cend() ? stranger : queued->number;
    linkLogUploading = true;
    m_onWire.insert(number);
    return number;
}

void LinkLog::uploadRefused(Number number)
{
    m_onWire.remove(number);
    linkLogUploading = true;
}

void LinkLog::uploadFailed(Number number)
{
    m_onWire.remove(number);
    linkLogUploading = false;
}

void LinkLog::uploadTimedOut(Number number) { m_onWire.remove(number); }

std::optional<LineLinkInfo> LinkLog::uploadAccepted(Number number)
{
    m_onWire.remove(number);
    if (linkLogQueue.isEmpty()) {
        return std::nullopt;
    }
    const auto accepted = std::find_if(linkLogQueue.begin(), linkLogQueue.end(),
        [number](const Entry &entry) { return entry.number == number; });
    if (accepted != linkLogQueue.end()) {
        linkLogQueue.erase(accepted);
    }
    linkLogUploading = !linkLogQueue.isEmpty();
    return headToSend();
}

std::optional<LineLinkInfo> LinkLog::head() const
{
    return linkLogQueue.isEmpty() ? std::nullopt : std::make_optional(linkLogQueue.first().record);
}

LinkLog::Number LinkLog::headNumber() const
{
    return linkLogQueue.isEmpty() ? stranger : linkLogQueue.first().number;
}

std::optional<LineLinkInfo> LinkLog::headToSend() const
{
    return isOnWire(headNumber()) ? std::nullopt : head();
}
