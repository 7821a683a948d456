#include "FuzzSetting.h"
#include "lines/LineInfo.h"
#include "lines/LineInfoListModel.h"

#include <QJsonDocument>
#include <QSet>

namespace {

void release(const QList<QObject *> &areas)
{
    QSet<QObject *> records;
    for (QObject *area : areas) {
        const auto *info = static_cast<LineInfo *>(area);
        records.insert(area);
        for (QObject *line : info->getChildItem() + info->getChildItem4Load()) {
            records.insert(line);
        }
    }
    qDeleteAll(records);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    QJsonObject reply = QJsonDocument::fromJson(
        QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)))
                            .object();
    for (const auto build : {&LineInfoListModel::createLineInfoModelList,
             &LineInfoListModel::createLineInfoModelListByCountry}) {
        LineInfoListModel model;
        QString message;
        (model.*build)(reply, message);
        release(model.getLineInfoModelList());
    }
    return 0;
}
