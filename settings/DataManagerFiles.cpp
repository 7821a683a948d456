#include "settings/DataManager.h"

#include "base/DebugLine.h"
#include "base/InstalledFiles.h"
#include "settings/JsonFile.h"

#include <QFile>
#include <QJsonArray>

// Which key of which file stands for which member. The rows are in the order of reading.
struct DataManager::Tables {
    static constexpr JsonField<DataManager> settings[] = {
        {"isBootUp", &DataManager::isBootUp},
        {"isMinToTray", &DataManager::isMinToTray},
        {"isAutoLogin", &DataManager::isAutoLogin},
        {"userName", &DataManager::userName},
        {"userPassword", &DataManager::userPassword},
        {"session", JsonText<DataManager>{&DataManager::getSession, &DataManager::setSession}},
        {"softUseLanguage", &DataManager::softUseLanguage},
        {"installPath", &DataManager::installPath},
        {"isInstallP2p", &DataManager::isInstallP2p},
        {"isPushPingLog", &DataManager::isPushPingLog},
        {"isPopupTips", &DataManager::isPopupTips},
        {"isFeedbackLine", &DataManager::isFeedbackLine},
        {"vpnModel", &DataManager::vpnModel},
        // Files older than the visitor login lack the key and must not switch it off.
        {"isVisitorLogin", &DataManager::isVisitorLogin, true},
    };
    static constexpr JsonField<DataManager> version[] = {
        {"softVersion", &DataManager::softVersion},
        {"softShowVersion", &DataManager::softShowVersion},
    };
    static constexpr JsonField<DataManager> channel[] = {
        {"channel", &DataManager::channel},
    };
    static constexpr JsonField<UpdateInfo> update[] = {
        {"updateUrl", &UpdateInfo::updateUrl},
        {"version", &UpdateInfo::version},
        {"versionShow", &UpdateInfo::versionShow},
    };
    static constexpr JsonField<CommonUsedArea> area[] = {
        {"lineArea", &CommonUsedArea::lineArea},
        {"usedNum", &CommonUsedArea::usedNum},
    };
    static constexpr JsonField<CommonUsedLine> line[] = {
        {"lineId", &CommonUsedLine::lineId},
        {"usedNum", &CommonUsedLine::usedNum},
    };
};

namespace {

QString fileIn(const QString &path, const char *name) { return path + QLatin1String(name); }

QString updateFile() { return QString::fromLatin1(InstalledFiles::updateInfo); }

QByteArray indented(const QJsonObject &object) { return QJsonDocument(object).toJson(); }

QString usedLinesKey() { return QStringLiteral("lineUsedList"); }

} // namespace

bool DataManager::writeDataToFile(const QString &path)
{
    debugLine() << "softUseLanguage:" << softUseLanguage;
    // It holds the password in plain text.
    JsonFile::write(fileIn(path, InstalledFiles::settings),
        indented(JsonFile::object(*this, Tables::settings)), JsonFile::Access::OwnerOnly);
    return true;
}

bool DataManager::readDataFromFile(const QString &path)
{
    const auto document = JsonFile::read(fileIn(path, InstalledFiles::settings));
    if (document && document->isObject()) {
        JsonFile::fill(*this, document->object(), Tables::settings);
        debugLine() << "[userName]:" << userName;
        debugLine() << "[userPassword]:" << userPassword;
    }
    return document.has_value();
}

bool DataManager::writeVersionInfoToFile(const QString &path)
{
    debugLine() << "writeVersionInfoToFile";
    JsonFile::write(fileIn(path, InstalledFiles::versionInfo),
        indented(JsonFile::object(*this, Tables::version)));
    return true;
}

bool DataManager::readVersionInfoFromFile(const QString &path)
{
    const QString file = fileIn(path, InstalledFiles::versionInfo);
    if (!QFile::exists(file)) {
        debugLine() << "版本文件不存在";
        return false;
    }
    debugLine() << "版本文件存在";
    debugLine() << "版本文件路径" << file;
    const auto document = JsonFile::read(file, "readVersionInfoFromFile line:");
    if (document && document->isObject()) {
        debugLine() << "把json文档转换为json对象";
        JsonFile::fill(*this, document->object(), Tables::version);
        debugLine() << "[softVersion]:" << softVersion;
        debugLine() << "[softShowVersion]:" << softShowVersion;
    }
    return document.has_value();
}

bool DataManager::writeUpdateInfoToFile(const UpdateInfo &info)
{
    JsonFile::write(updateFile(), indented(JsonFile::object(info, Tables::update)));
    return true;
}

bool DataManager::readUpdateInfoFromFile()
{
    const auto document = JsonFile::read(updateFile());
    if (document && document->isObject()) {
        JsonFile::fill(updateInfo, document->object(), Tables::update);
    }
    return document.has_value();
}

bool DataManager::readChannel(const QString &path)
{
    const auto document = JsonFile::read(fileIn(path, InstalledFiles::channel));
    if (document && document->isObject()) {
        JsonFile::fill(*this, document->object(), Tables::channel);
    }
    return true;
}

bool DataManager::writeCommonUsedLineToFile(const QString &path)
{
    sortCommonUsedAreas();
    QJsonArray areas;
    for (const CommonUsedArea &area : qAsConst(commonUsedAreaList)) {
        QJsonArray lines;
        for (const CommonUsedLine &line : area.lineUsedList) {
            lines.append(JsonFile::object(line, Tables::line));
        }
        QJsonObject object = JsonFile::object(area, Tables::area);
        object.insert(usedLinesKey(), lines);
        areas.append(object);
    }
    JsonFile::write(fileIn(path, InstalledFiles::commonUsedLines),
        QJsonDocument(areas).toJson(QJsonDocument::Compact));
    return true;
}

bool DataManager::readCommonUsedLineFromFile(const QString &path)
{
    const auto document = JsonFile::read(fileIn(path, InstalledFiles::commonUsedLines));
    if (!document) {
        return false;
    }
    const QJsonArray areas = document->array();
    debugLine() << "常用地区个数:" << areas.size();
    for (const QJsonValue &element : areas) {
        const QJsonObject object = element.toObject();
        CommonUsedArea area;
        JsonFile::fill(area, object, Tables::area);
        const QJsonArray lines = object.value(usedLinesKey()).toArray();
        for (const QJsonValue &entry : lines) {
            CommonUsedLine line;
            JsonFile::fill(line, entry.toObject(), Tables::line);
            area.lineUsedList.append(line);
        }
        debugLine() << "常用线路个数:" << area.lineUsedList.size();
        commonUsedAreaList.append(area);
    }
    return true;
}
