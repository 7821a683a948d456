#include "api/KQHttpManager.h"
#include "api/RequestSignature.h"
#include "base/Deployment.h"
#include "bench/functions/LinesToFile.h"
#include "bench/functions/WithoutDebugLines.h"
#include "settings/DataManager.h"

#include <QCryptographicHash>
#include <QNetworkRequest>

#include <benchmark/benchmark.h>

namespace {

// As a signed-in user's requests carry them, with one header of the caller's own.
RequestHeaders headers()
{
    return {{"_device_os", "linux"}, {"_language", "_en"}, {"_os_version", "debian12"},
        {"_oem", "default"}, {"_prj_name", "vornvpn"}, {"_salt", "02:FC:00:00:00:01"},
        {"_sn", "02:FC:00:00:00:01"}, {"_session", "3f2b9c70a1d84e55b6c1f00d9e8a7b6c"},
        {"_uid", "1234567"}, {"_username", "user1234567@vorn"}, {"_timestamp", "1700000000"},
        {"_version", "101"}, {"_version_show", "1.0.1"}, {"_brand", "vornvpn"},
        {"_channel", "official"}, {"_device_name", "workstation"}};
}

void signIn()
{
    UserInfo user;
    user.setSession(QStringLiteral("3f2b9c70a1d84e55b6c1f00d9e8a7b6c"));
    user.setUid(1234567);
    user.setRadiusUserName(QStringLiteral("user1234567@vorn"));
    DataManager::getInstance()->setUserInfo(user);
}

void headers_md5(benchmark::State &state)
{
    const QByteArray text = signatureText(headers());
    for (auto _ : state) {
        benchmark::DoNotOptimize(QCryptographicHash::hash(text, QCryptographicHash::Md5));
    }
}

void measureHeaders(benchmark::State &state)
{
    Deployment::current().ipLookupAddress.clear();
    KQHttpManager manager;
    signIn();
    for (auto _ : state) {
        QNetworkRequest request;
        manager.createHttpHeader(request);
        benchmark::DoNotOptimize(request);
    }
}

void headers_written(benchmark::State &state)
{
    const LinesToFile log;
    measureHeaders(state);
}

void headers_logged(benchmark::State &state) { measureHeaders(state); }

void headers_quiet(benchmark::State &state)
{
    const WithoutDebugLines quiet;
    measureHeaders(state);
}

BENCHMARK(headers_md5);
BENCHMARK(headers_logged);
BENCHMARK(headers_written);
BENCHMARK(headers_quiet);

} // namespace
