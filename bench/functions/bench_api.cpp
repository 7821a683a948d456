#include "api/KQHttpManager.h"
#include "base/Deployment.h"
#include "bench/functions/LoopbackAnswers.h"
#include "settings/DataManager.h"

#include <QEventLoop>
#include <QHttpMultiPart>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>

#include <benchmark/benchmark.h>

namespace {

constexpr char answer[] = R"({"code":0,"msg":"ok","data":{"ip":"198.51.100.7","wl":0}})";

// From the call to the signal that tells its outcome.
void api_post(benchmark::State &state)
{
    const LoopbackAnswers server(answer);
    Deployment::current().ipLookupAddress.clear();
    DataManager::getInstance()->setDomainName(server.baseAddress());
    KQHttpManager manager;
    QEventLoop loop;
    QObject::connect(&manager, &KQHttpManager::sendIsChinaIp, &loop, &QEventLoop::quit);
    for (auto _ : state) {
        manager.checkRegion();
        loop.exec();
    }
}

// The same request with the headers ready made, the reply read and parsed.
void api_bare(benchmark::State &state)
{
    const LoopbackAnswers server(answer);
    QNetworkAccessManager manager;
    manager.setProxy(QNetworkProxy(QNetworkProxy::NoProxy));
    QNetworkRequest request(QUrl(server.baseAddress() + QStringLiteral("/api/system/region")));
    for (int i = 0; i < 14; ++i) {
        request.setRawHeader("_header" + QByteArray::number(i), "a value of usual length");
    }
    QEventLoop loop;
    for (auto _ : state) {
        manager.clearConnectionCache();
        auto *form = new QHttpMultiPart(QHttpMultiPart::FormDataType);
        QNetworkReply *reply = manager.post(request, form);
        form->setParent(reply);
        QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        benchmark::DoNotOptimize(QJsonDocument::fromJson(reply->readAll()).object().isEmpty());
        reply->deleteLater();
    }
}

BENCHMARK(api_post)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(api_bare)->UseRealTime()->Unit(benchmark::kMicrosecond);

} // namespace
