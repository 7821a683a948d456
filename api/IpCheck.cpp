#include "api/IpCheck.h"

#include "base/ReplyEnvelope.h"

namespace {
constexpr int retryLimit = 3; // compared with >=, for the scenes may set any count
}

IpCheck::Verdict IpCheck::failed()
{
    ++getMyIPNum;
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
        ++getMyIPNum;
        return Verdict::Retry;
    }
    m_exitAddress = {ip, reply.value(QLatin1String("cityid")).toInt(), textOf(reply, "country"),
        textOf(reply, "area"), textOf(reply, "province"), textOf(reply, "city"),
        textOf(reply, "isp")};
    return ip == localPublicIp ? Verdict::NotProxied : Verdict::Proxied;
}
