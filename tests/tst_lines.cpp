#include <QJsonDocument>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QtTest>

#include "lines/Coordinates.h"
#include "lines/LineCatalogue.h"
#include "lines/LineInfo.h"
#include "lines/LineInfoListModel.h"

using Builder = bool (LineInfoListModel::*)(QJsonObject &, QString &);
Q_DECLARE_METATYPE(Builder)

namespace {

// The values that are not as in a new record, in the order of the properties.
QString described(const QObject *record)
{
    QStringList values;
    const QMetaObject &meta = LineInfo::staticMetaObject;
    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
        const QVariant value = meta.property(index).read(record);
        const QVariant unset(value.userType(), nullptr);
        if (value.canConvert<QString>() && value != unset) {
            values.append(value.toString());
        }
    }
    return values.join(QLatin1Char(' '));
}

} // namespace

class TestLines : public QObject {
    Q_OBJECT

private slots:
    void recordsAnnounceEveryWrite_data()
    {
        QTest::addColumn<int>("index");
        const QMetaObject &meta = LineInfo::staticMetaObject;
        QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 22);
        for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
            QTest::newRow(meta.property(index).name()) << index;
        }
    }

    void recordsAnnounceEveryWrite()
    {
        QFETCH(int, index);
        const QMetaProperty property = LineInfo::staticMetaObject.property(index);
        LineInfo record;
        const QHash<int, QVariant> values = {{QMetaType::Int, 1}, {QMetaType::Double, -2.5},
            {QMetaType::Bool, true}, {QMetaType::QString, "text"},
            {qMetaTypeId<QList<QObject *>>(), QVariant::fromValue(QList<QObject *>{this})}};
        const QVariant value = values.value(property.userType());
        QCOMPARE(property.read(&record), QVariant(property.userType(), nullptr));

        const bool isRelayPort = qstrcmp(property.name(), "qTransPort") == 0;
        QSignalSpy notified(&record, property.notifySignal());
        QSignalSpy relayPort(&record, &LineInfo::transPortChanged);
        QVERIFY(property.write(&record, value) && property.write(&record, value));
        QCOMPARE(property.read(&record), value);
        QCOMPARE(notified.size(), isRelayPort ? 0 : 2);
        QCOMPARE(relayPort.size(), isRelayPort ? 2 : 0);
    }

    void signalsKeepTheirOrder()
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
        const auto property = [&](const char *n) { return meta.property(meta.indexOfProperty(n)); };
        QCOMPARE(property("qTransPort").notifySignal().name(), QByteArray("transIpChanged"));
        QCOMPARE(QByteArray(property("qIsCurrentUse").typeName()), QByteArray("int"));
    }

    void serverListBecomesACatalogue_data()
    {
        QTest::addColumn<Builder>("builder");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QStringList>("areas"); // or the message of a refusal
        const auto row = [](const char *name, const QByteArray &reply, const QStringList &areas,
                             Builder builder =
                                 &LineInfoListModel::createLineInfoModelListByCountry) {
            QTest::newRow(name) << builder << reply << areas;
        };
        const auto flat = &LineInfoListModel::createLineInfoModelList;
        // clang-format off
        row("a refusal", R"({"code":200,"msg":"no","data":[{"name_en":"A"}]})", {"no"});
        row("no list", R"({"code":0,"data":{"a":1}})", {});
        row("one server, no fastest entry",
            R"({"data":[{"name_en":"A","img":"a.png","lon":"-1.5","lat":7,"servers":[{"country_id":"A","id":3}]}]})",
            {"A a.png 1 -1.5 7 (1) < 3 A #1 1 3000"});
        row("each country counts its servers anew",
            R"({"data":[{"name_en":"A","servers":[{"country_id":1,"id":"8"},{"country_id":"B"},{"country_id":"1"}]},
                {"servers":[{"country_id":"B","id":4.5},{"id":5,"country_id":"B","more":[1]}]}]})",
            {"A 4 (3) < A Fastest 1 101; 8 1 #1 1 3000; B #1 1 3000; 1 #2 1 3000",
             "3 (2) < Fastest 1 101; B #1 1 3000; 5 B #2 1 3000"});
        row("without a country the server's own name and id",
            R"({"data":[{"servers":[{"name":"N","id":5},{"name":"N","id":"6x","country_id":""},{"country_id":[]}]},{}]})",
            {"4 (3) < Fastest 1 101; 5 N #5 1 3000; N #6x 1 3000;  # 1 3000", " (0) < "});
        row("every value of a server",
            R"({"data":[{"servers":[{"country_id":"L","id":1,"name_en":"Stadt","national_flag":"l.png",
                "ip":"192.0.2.1","domain":"l.example.com","uuid":"u-1","load":0.25,"trans_domain":"r.example.com",
                "trans_ip":"192.0.2.9","trans_port":8443,"srv_location":"{\\\u0022lon\\\u0022:\\\u002213.4\\\u0022,\u0022lat\u0022:52.5}"}]}]})",
            {"1 (1) < 1 Stadt L #1 l.png u-1 1 192.0.2.1 3000 13.4 52.5 l.example.com r.example.com 192.0.2.9 8443 0.25"});
        row("values of other types",
            R"({"data":[{"lon":[],"name_en":1,"servers":[{"name":5,"name_en":[],"ip":1,"load":"0.25","uuid":true,
                "domain":{},"trans_port":"443","srv_location":{"lon":1}}]}]})", {"1 (1) <  # 1 3000 443"});
        row("a flat list", R"({"data":[{"name":"A","line":[{"name":"a","id":"7","national_flag":"a.png",
            "ip":"192.0.2.1"},{"id":8}]},{}]})", {"A (0) < 7 A a a.png 1 192.0.2.1 3000; 8 A 1 3000", " (0) < "}, flat);
        row("a flat list refused", R"({"code":-1,"msg":"later","data":[{}]})", {"later"}, flat);
        // clang-format on
    }

    void serverListBecomesACatalogue()
    {
        QFETCH(Builder, builder);
        QFETCH(QByteArray, reply);
        QJsonObject object = QJsonDocument::fromJson(reply).object();
        LineInfoListModel model;
        QString message;
        const bool accepted = (model.*builder)(object, message);
        LineCatalogue catalogue; // releases the records
        catalogue.replace(model.getLineInfoModelList());
        QStringList areas = accepted ? QStringList() : QStringList(message);
        for (const QObject *record : catalogue.areas()) {
            const auto *area = static_cast<const LineInfo *>(record);
            QStringList lines;
            for (const QObject *line : area->getChildItem()) {
                lines.append(described(line));
            }
            areas.append(QString("%1 (%2) < %3")
                             .arg(described(area))
                             .arg(area->getChildItem4Load().size())
                             .arg(lines.join("; ")));
        }
        QTEST(areas, "areas");
    }

    // The quick reading and the JSON parser give the same answers.
    void coordinatesAreRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("lon");
        QTest::addColumn<double>("lat");
        QTest::newRow("texts") << R"({"lon":"13.4050","lat":"-52.52"})" << 13.405 << -52.52;
        QTest::newRow("numbers") << R"({"lon":0.1,"lat":-7})" << 0.1 << -7.0;
        QTest::newRow("blanks, other order") << R"( {"lat" : "2", "lon" : 1e1} )" << 10.0 << 2.0;
        QTest::newRow("17 digits")
            << R"({"lon":0.12345678901234567,"lat":1})" << 0.12345678901234567 << 1.0;
        QTest::newRow("zero in front, text") << R"({"lon":"007.5","lat":"1"})" << 7.5 << 1.0;
        QTest::newRow("zero in front, number") << R"({"lon":007.5,"lat":1})" << 0.0 << 0.0;
        QTest::newRow("more keys") << R"({"lon":"3","lat":"4","city":"x"})" << 3.0 << 4.0;
        QTest::newRow("no numbers") << R"({"lon":"east","lat":true})" << 0.0 << 0.0;
        QTest::newRow("cut") << R"({"lon":"3","lat":"4")" << 0.0 << 0.0;
        QTest::newRow("rubbish behind") << R"({"lon":"3","lat":"4"}})" << 0.0 << 0.0;
        QTest::newRow("nothing") << "" << 0.0 << 0.0;
    }

    void coordinatesAreRead()
    {
        QFETCH(QString, text);
        const Coordinates coordinates = coordinatesOf(text);
        QTEST(coordinates.lon, "lon");
        QTEST(coordinates.lat, "lat");
    }
};

QTEST_GUILESS_MAIN(TestLines)
#include "tst_lines.moc"
