#include "lines/LineInfoListModel.h"

#include "base/DebugLine.h"
#include "lines/LineBuilder.h"
#include "lines/LineInfo.h"

#include <QJsonArray>

#include <ctime>

namespace {

// A hundred countries of a hundred servers each: their lines must not cost more than their reading.
QString beginningOf(const QJsonObject &object)
{
    constexpr int shown = 2048; // bytes
    return LoggedText::of(object, shown, shown);
}

// False when the server refused; message is then its reason.
bool isAccepted(const QJsonObject &reply, QString &message)
{
    if (reply.value(QLatin1String("code")).toInt() == 0) {
        return true;
    }
    message = reply.value(QLatin1String("msg")).toString();
    debugLine() << "retMessageg:" << message;
    return false;
}

} // namespace

LineInfoListModel::LineInfoListModel(QObject *parent)
    : QObject(parent)
{
}

bool LineInfoListModel::createLineInfoModelList(QJsonObject &json, QString &retMessage)
{
    if (!isAccepted(json, retMessage)) {
        return false;
    }
    LineBuilder builder;
    const QJsonArray areas = json.value(QLatin1String("data")).toArray();
    for (const QJsonValue &area : areas) {
        m_areas.append(builder.area(area.toObject()));
        debugLine() << "lineInfoModelList.push_back over";
    }
    return true;
}

bool LineInfoListModel::createLineInfoModelListByCountry(QJsonObject &json, QString &retMessage)
{
    const std::time_t start = std::time(nullptr);
    debugLine().put("createLineInfoModelListByCountry jsonL:").put(beginningOf(json));
    if (!isAccepted(json, retMessage)) {
        return false;
    }
    LineBuilder builder;
    const QJsonArray countries = json.value(QLatin1String("data")).toArray();
    for (const QJsonValue &value : countries) {
        const QJsonObject country = value.toObject();
        debugLine().put("jsonLineParent:").put(beginningOf(country));
        m_areas.append(builder.areaByCountry(country));
    }
    debugLine() << "解析线路花费时长:" << std::time(nullptr) - start;
    return true;
}

QList<QObject *> LineInfoListModel::getLineInfoModelList() const { return m_areas; }
