#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QtTest>

#include "lines/Coordinates.h"
#include "lines/LineInfo.h"
#include "lines/LineInfoListModel.h"

namespace {

QJsonObject parsed(const QByteArray &text) { return QJsonDocument::fromJson(text).object(); }

QString described(const QObject *record, const char *properties)
{
    QStringList values;
    const QByteArrayList names = QByteArray(properties).split(' ');
    for (const QByteArray &name : names) {
        values.append(record->property(name).toString());
    }
    return values.join(QLatin1Char(','));
}

// "area < line; line", with the named properties of each.
QString described(
    QObject *area, const char *areaProperties, const char *list, const char *properties)
{
    QStringList lines;
    const auto children = area->property(list).value<QList<QObject *>>();
    for (const QObject *line : children) {
        lines.append(described(line, properties));
    }
    return described(area, areaProperties) + QLatin1String(" < ") + lines.join(QLatin1String("; "));
}

// What a catalogue's owner does with a model's records at the end.
struct ReleasedModel : LineInfoListModel {
    ~ReleasedModel() override
    {
        const QList<QObject *> areas = getLineInfoModelList();
        for (QObject *area : areas) {
            qDeleteAll(area->property("items").value<QList<QObject *>>());
            delete area;
        }
    }
};

} // namespace

class TestLines : public QObject {
    Q_OBJECT

private slots:
    void recordsAnnounceEveryWrite_data();
    void recordsAnnounceEveryWrite();
    void signalsKeepTheirOrder();
    void countriesBecomeAreas_data();
    void countriesBecomeAreas();
    void serverValuesReachTheRecord();
    void flatListBecomesAreas();
    void coordinatesAreRead_data();
    void coordinatesAreRead();
};

void TestLines::recordsAnnounceEveryWrite_data()
{
    QTest::addColumn<int>("index");
    const QMetaObject &meta = LineInfo::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 22);
    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
        QTest::newRow(meta.property(index).name()) << index;
    }
}

void TestLines::recordsAnnounceEveryWrite()
{
    QFETCH(int, index);
    const QMetaProperty property = LineInfo::staticMetaObject.property(index);
    LineInfo record;
    QObject child;
    const int objectList = qMetaTypeId<QList<QObject *>>();
    const QHash<int, QVariant> values = {{QMetaType::Int, 1}, {QMetaType::Double, -2.5},
        {QMetaType::Bool, true}, {QMetaType::QString, QStringLiteral("text")},
        {objectList, QVariant::fromValue(QList<QObject *>{&child})}};
    const QVariant value = values.value(property.userType());
    QCOMPARE(property.read(&record), QVariant(property.userType(), nullptr));

    const bool isRelayPort = qstrcmp(property.name(), "qTransPort") == 0;
    QSignalSpy spy(&record, property.notifySignal());
    QSignalSpy relayPortSpy(&record, &LineInfo::transPortChanged);
    QVERIFY(property.write(&record, value));
    QVERIFY(property.write(&record, value));
    QCOMPARE(spy.count(), isRelayPort ? 0 : 2);
    QCOMPARE(relayPortSpy.count(), isRelayPort ? 2 : 0);
    QCOMPARE(property.read(&record), value);
}

void TestLines::signalsKeepTheirOrder()
{
    const QMetaObject &meta = LineInfo::staticMetaObject;
    QByteArrayList names;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        names.append(meta.method(index).name().replace("Changed", ""));
    }
    QCOMPARE(names.join(' '),
        QByteArray("lineId lineArea lineName lineImage childItem level serverIp serverPort "
                   "serverNum lon lat ping isCurrentUse domain usedNum lineUuid isRecommend "
                   "transDomain transIp transPort lineLoad childItem4Load"));
    QCOMPARE(meta.property(meta.indexOfProperty("qTransPort")).notifySignal().name(),
        QByteArray("transIpChanged"));
    QCOMPARE(QByteArray(meta.property(meta.indexOfProperty("qIsCurrentUse")).typeName()),
        QByteArray("int"));
}

void TestLines::countriesBecomeAreas_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QStringList>("areas");
    QTest::addColumn<QString>("message"); // null: accepted

    QTest::newRow("a refusal") << QByteArray(R"({"code":7,"msg":"no","data":[{"name_en":"A"}]})")
                               << QStringList() << "no";
    QTest::newRow("an empty list")
        << QByteArray(R"({"code":0,"data":[]})") << QStringList() << QString();
    QTest::newRow("no list at all")
        << QByteArray(R"({"code":0,"data":{"a":1}})") << QStringList() << QString();
    QTest::newRow("one server, no fastest entry") << QByteArray(
        R"({"data":[{"name_en":"A","img":"a.png","lon":"-1.5","lat":7,"servers":[{"country_id":"A","id":3}]}]})")
                                                  << QStringList{"A,a.png,0,-1.5,7,1 < A #1,3,0"}
                                                  << QString();
    QTest::newRow("each country counts its servers anew") << QByteArray(
        R"({"code":0,"data":[{"name_en":"A","servers":[{"country_id":1,"id":"8"},{"country_id":"B"},{"country_id":"1"}]},
            {"name_en":"B","servers":[{"country_id":"B","id":4.5},{"id":5,"country_id":"B","more":[1]}]}]})")
                                                          << QStringList{"A,,0,0,0,4 < "
                                                                         "Fastest,0,101; 1 #1,8,0; "
                                                                         "B #1,0,0; 1 #2,0,0",
                                                                 "B,,0,0,0,3 < Fastest,0,101; B "
                                                                 "#1,0,0; B #2,5,0"}
                                                          << QString();
    QTest::newRow("without a country the server's own name and id") << QByteArray(
        R"({"code":0,"data":[{"servers":[{"name":"N","id":5},{"name":"N","id":"6x","country_id":""},{"id":true,"country_id":[]}]},{}]})")
                                                                    << QStringList{",,0,0,0,4 < "
                                                                                   "Fastest,0,101; "
                                                                                   "N #5,5,0; N "
                                                                                   "#6x,0,0;  "
                                                                                   "#,0,0",
                                                                           ",,0,0,0,0 < "}
                                                                    << QString();
}

void TestLines::countriesBecomeAreas()
{
    QFETCH(QByteArray, reply);
    ReleasedModel model;
    QJsonObject json = parsed(reply);
    QString message;
    const bool accepted = model.createLineInfoModelListByCountry(json, message);
    QStringList areas;
    const QList<QObject *> records = model.getLineInfoModelList();
    for (QObject *area : records) {
        areas.append(described(area, "qLineArea qLineImage qLevel qLon qLat qServerNum", "items",
            "qLineName qLineId qPing"));
    }
    QTEST(areas, "areas");
    QTEST(message, "message");
    QCOMPARE(accepted, message.isNull());
}

void TestLines::serverValuesReachTheRecord()
{
    ReleasedModel model;
    QJsonObject json = parsed(R"({"code":0,"data":[{"name_en":"Land","servers":[
        {"country_id":"L","id":1,"name_en":"Stadt","national_flag":"l.png","ip":"192.0.2.1",
         "domain":"l.example.com","uuid":"u-1","load":0.25,"trans_domain":"r.example.com",
         "trans_ip":"192.0.2.9","trans_port":8443,"srv_location":"{\\\"lon\\\":\\\"13.4\\\",\\\"lat\\\":52.5}"},
        {"name":5,"name_en":[],"ip":1,"load":"0.25","trans_port":"443","srv_location":{"lon":1}}]}]})");
    QString message;
    QVERIFY(model.createLineInfoModelListByCountry(json, message));
    QVERIFY(model.createLineInfoModelListByCountry(json, message)); // appends
    QCOMPARE(model.getLineInfoModelList().size(), 2);
    const char *properties = "qLineArea qLineImage qLevel qServerIp qServerPort qDomain qLineUuid "
                             "qLineLoad qTransDomain qTransIp qTransPort qLon qLat";
    QObject *area = model.getLineInfoModelList().constLast();
    QCOMPARE(described(area, "qLevel", "loadItems", properties),
        QString("0 < Stadt,l.png,1,192.0.2.1,3000,l.example.com,u-1,0.25,r.example.com,192.0.2.9,"
                "8443,13.4,52.5; ,,1,,3000,,,0,,,443,0,0"));
    QCOMPARE(described(area->property("items").value<QList<QObject *>>().constFirst(), properties),
        QString("Land,,1,,0,,,0,,,,0,0"));
}

void TestLines::flatListBecomesAreas()
{
    ReleasedModel model;
    QString message;
    QJsonObject refusal = parsed(R"({"code":-1,"msg":"later","data":[{}]})");
    QVERIFY(!model.createLineInfoModelList(refusal, message));
    QCOMPARE(message, QString("later"));
    QJsonObject json = parsed(R"({"code":0,"data":[{"name":"A","line":[
        {"name":"a1","id":"7","national_flag":"a.png","ip":"192.0.2.1"},{"name":"a2","id":8}]},{"name":"B"}]})");
    QVERIFY(model.createLineInfoModelList(json, message));
    const QList<QObject *> areas = model.getLineInfoModelList();
    QCOMPARE(areas.size(), 2);
    QCOMPARE(described(areas.constFirst(), "qLineArea qLevel", "items",
                 "qLineArea qLineName qLineId qLineImage qServerIp qServerPort qLevel"),
        QString("A,0 < A,a1,7,a.png,192.0.2.1,3000,1; A,a2,8,,,3000,1"));
    QCOMPARE(described(areas.constLast(), "qLineArea", "items", "qLineName"), QString("B < "));
}

// The quick reading and the JSON parser give the same answers.
void TestLines::coordinatesAreRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("lon");
    QTest::addColumn<double>("lat");

    QTest::newRow("texts") << R"({"lon":"13.4050","lat":"-52.52"})" << 13.405 << -52.52;
    QTest::newRow("numbers") << R"({"lon":0.1,"lat":-7})" << 0.1 << -7.0;
    QTest::newRow("escaped twice")
        << R"({\\\"lon\\\":\\\"1\\\",\\\"lat\\\":\\\"2\\\"})" << 1.0 << 2.0;
    QTest::newRow("blanks, other order") << R"( {"lat" : "2", "lon" : 1e1} )" << 10.0 << 2.0;
    QTest::newRow("blanks inside the texts") << R"({"lon":" 1 ","lat":"2 "})" << 1.0 << 2.0;
    QTest::newRow("sixteen digits") << R"({"lon":"0.1234567890123456","lat":"9007199254740993"})"
                                    << 0.1234567890123456 << 9007199254740992.0;
    QTest::newRow("a leading zero as text") << R"({"lon":"007.5","lat":"1"})" << 7.5 << 1.0;
    QTest::newRow("a leading zero as number") << R"({"lon":007.5,"lat":1})" << 0.0 << 0.0;
    QTest::newRow("one key") << R"({"lon":"3"})" << 3.0 << 0.0;
    QTest::newRow("more keys") << R"({"lon":"3","lat":"4","city":"x"})" << 3.0 << 4.0;
    QTest::newRow("no number") << R"({"lon":"east","lat":true})" << 0.0 << 0.0;
    QTest::newRow("cut") << R"({"lon":"3","lat":"4")" << 0.0 << 0.0;
    QTest::newRow("rubbish behind") << R"({"lon":"3","lat":"4"}})" << 0.0 << 0.0;
    QTest::newRow("a list") << R"(["lon","lat"])" << 0.0 << 0.0;
    QTest::newRow("nothing") << "" << 0.0 << 0.0;
}

void TestLines::coordinatesAreRead()
{
    QFETCH(QString, text);
    const Coordinates coordinates = coordinatesOf(text);
    QTEST(coordinates.lon, "lon");
    QTEST(coordinates.lat, "lat");
}

QTEST_GUILESS_MAIN(TestLines)
#include "tst_lines.moc"
