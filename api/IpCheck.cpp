#include "api/IpCheck.h"

#include "base/ReplyEnvelope.h"

#include <limits>

namespace {
constexpr int retryLimit = 3; // compared with >=, for the scenes may set any count
}

// A scene may have set the greatest number there is.
void IpCheck::countRetry()
{
    if (getMyIPNum < std::numeric_limits<int>::max()) {
        ++getMyIPNum;
    }
}

IpCheck::Verdict IpCheck::countError()
{
    countRetry();
    return getMyIPNum >= retryLimit ? Verdict::GiveUp : Verdict::Retry;
}

IpCheck::Verdict IpCheck::answered(const QJsonObject &reply)
{
    const QString ip = textOf(reply, "ip");
    if (firstIpLookup) {
        firstIpLookup = false;
        localPublicIp = ip;
        return Verdict::OwnAddress;
    }
    if (ip == localPublicIp && getMyIPNum < retryLimit) {
        countRetry();
        return Verdict::Retry;
    }
    m_exitAddress = {ip, reply.value(QLatin1String("cityid")).toInt(), textOf(reply, "country"),
        textOf(reply, "area"), textOf(reply, "province"), textOf(reply, "city"),
        textOf(reply, "isp")};
    return ip == localPublicIp ? Verdict::NotProxied : Verdict::Proxied;
}
