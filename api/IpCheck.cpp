#include "api/IpCheck.h"

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
    const auto text = [&reply](
                          const char *key) { return reply.value(QLatin1String(key)).toString(); };
    const QString ip = text("ip");
    if (firstIpLookup) {
        firstIpLookup = false;
        localPublicIp = ip;
        return Verdict::OwnAddress;
    }
    if (ip == localPublicIp && getMyIPNum < retryLimit) {
        ++getMyIPNum;
        return Verdict::Retry;
    }
    m_exitAddress = {ip, reply.value(QLatin1String("cityid")).toInt(), text("country"),
        text("area"), text("province"), text("city"), text("isp")};
    return ip == localPublicIp ? Verdict::NotProxied : Verdict::Proxied;
}
