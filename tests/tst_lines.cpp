#include "Manual.h"
#include "Spies.h"
#include "lines/LineCatalogue.h"
#include "lines/LineInfo.h"
#include "lines/LineInfoListModel.h"

namespace {

const QMetaObject &meta = LineInfo::staticMetaObject;

QStringList namesOf(const QList<QObject *> &lines)
{
    QStringList names;
    for (const QObject *line : lines) {
        names.append(line->property("qLineName").toString());
    }
    return names;
}

// The values that are not as in a new record.
QVariantMap filledProperties(const QObject *record)
{
    QVariantMap filled;
    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
        const QVariant value = meta.property(index).read(record);
        if (value != meta.property(index).read(std::make_unique<LineInfo>().get())) {
            filled.insert(meta.property(index).name(), value);
        }
    }
    return filled;
}

} // namespace

class TestLines : public QObject {
    Q_OBJECT

    LineCatalogue catalogue; // releases the records

    QList<LineInfo *> areasOf(const QString &data,
        bool (LineInfoListModel::*read)(
            QJsonObject &, QString &) = &LineInfoListModel::createLineInfoModelListByCountry)
    {
        QJsonObject reply = QJsonDocument::fromJson(json("{'data':[" + data + "]}")).object();
        LineInfoListModel model;
        QString message;
        (model.*read)(reply, message);
        qDeleteAll(catalogue.replace(model.getLineInfoModelList()));
        QList<LineInfo *> areas;
        for (QObject *area : catalogue.areas())
            areas.append(static_cast<LineInfo *>(area));
        return areas;
    }

private slots:
    void recordsAnnounceEveryWrite()
    {
        const QHash<int, QVariant> values = {{QMetaType::Int, 1}, {QMetaType::Double, -2.5},
            {QMetaType::Bool, true}, {QMetaType::QString, "text"},
            {qMetaTypeId<QList<QObject *>>(), QVariant::fromValue(QList<QObject *>{this})}};
        for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
            const QMetaProperty property = meta.property(index);
            const QVariant value = values.value(property.userType());
            LineInfo record;
            QCOMPARE(property.read(&record), QVariant(property.userType(), nullptr));
            const Spies spies = spiesOn(&record);
            QVERIFY(property.write(&record, value));
            QCOMPARE(property.read(&record), value);
            const bool isPort = property.name() == QByteArray("qTransPort");
            QCOMPARE(written(spies).toLatin1(),
                isPort ? "transPortChanged()" : property.notifySignal().methodSignature());
        }
        QCOMPARE(meta.property(meta.indexOfProperty("qTransPort")).notifySignal().name(),
            QByteArray("transIpChanged"));
        QCOMPARE(LineInfo().property("qIsCurrentUse").userType(), int{QMetaType::Int});
    }

    void linesAreNamedAsTheManualSays()
    {
        QStringList countries;
        QList<QStringList> expected;
        for (const QStringList &cells : tableBelow("### How lines are named")) {
            countries.append("{'servers':[" + codeIn(cells[0]).join("") + "]}");
            expected.append(codeIn(cells[1]));
        }
        QList<QStringList> built;
        for (const LineInfo *area : areasOf(countries.join(','))) {
            QStringList names = namesOf(area->getChildItem());
            QCOMPARE(area->getServerNum(), names.size());
            built.append(names);
            names.removeOne("Fastest");
            QCOMPARE(namesOf(area->getChildItem4Load()), names);
        }
        QVERIFY(!built.isEmpty());
        QCOMPARE(built, expected);
    }

    void everyValueOfAServerIsTaken()
    {
        const LineInfo *area = areasOf(
            "{'name_en':'A','img':'i','lon':'-1.5','lat':7,'servers':[{'country_id':'L',"
            "'id':'1','name_en':'Stadt','national_flag':'l.png','ip':'192.0.2.1',"
            "'domain':'l.example.com','uuid':'u-1','load':0.25,'trans_ip':'192.0.2.9',"
            "'trans_domain':'r.example.com','trans_port':8443,"
            "'srv_location':'{\\\\\\u0022lon\\\\\\u0022:13.4,\\u0022lat\\u0022:52.5}'},{}]}")
                                   .constFirst();
        QCOMPARE(area->getLineArea(), QString("A"));
        QCOMPARE(area->getLineImage(), QString("i"));
        QCOMPARE(area->getLon(), -1.5);
        QCOMPARE(area->getLat(), 7.0);
        const QList<QObject *> lines = area->getChildItem();
        QCOMPARE(filledProperties(lines.at(0)),
            QVariantMap(
                {{"qLineName", "Fastest"}, {"qLineArea", "A"}, {"qLevel", 1}, {"qPing", 101}}));
        QCOMPARE(filledProperties(lines.at(1)),
            QVariantMap({{"qLineName", "L #1"}, {"qLineArea", "Stadt"}, {"qLineId", 1},
                {"qLevel", 1}, {"qLineImage", "l.png"}, {"qServerIp", "192.0.2.1"},
                {"qServerPort", 3000}, {"qDomain", "l.example.com"}, {"qLineUuid", "u-1"},
                {"qLineLoad", 0.25}, {"qTransDomain", "r.example.com"}, {"qTransIp", "192.0.2.9"},
                {"qTransPort", "8443"}, {"qLon", 13.4}, {"qLat", 52.5}}));
        QCOMPARE(filledProperties(lines.at(2)),
            QVariantMap({{"qLineName", " #1"}, {"qLevel", 1}, {"qServerPort", 3000}}));
    }

    void aFlatListHasNoCountries()
    {
        const LineInfo *area =
            areasOf("{'name':'A','line':[{'name':'a','id':'7','national_flag':'a.png',"
                    "'ip':'192.0.2.1'}]}",
                &LineInfoListModel::createLineInfoModelList)
                .constFirst();
        QCOMPARE(area->getLineArea(), QString("A"));
        QCOMPARE(filledProperties(area->getChildItem().constFirst()),
            QVariantMap({{"qLineName", "a"}, {"qLineArea", "A"}, {"qLineId", 7}, {"qLevel", 1},
                {"qLineImage", "a.png"}, {"qServerIp", "192.0.2.1"}, {"qServerPort", 3000}}));
    }

    void aReplyIsLoggedAsTheBeginningOfItsCompactJson()
    {
        QJsonObject reply = QJsonDocument::fromJson(
            json("{'code':-7,'data':[null,{},[],true,13.4,1e300,0.1,9007199254740993],"
                 "'msg':'a \\u0022 \\\\ \\n'}"))
                                .object();
        const QByteArray whole = QJsonDocument(reply).toJson(QJsonDocument::Compact);
        const QByteArray label = "createLineInfoModelListByCountry jsonL:QJsonObject(";
        QTest::ignoreMessage(QtDebugMsg, QByteArray(label + whole + ")").constData());
        QString message;
        QVERIFY(!LineInfoListModel().createLineInfoModelListByCountry(reply, message));

        reply["data"] = QString(5000, 'x');
        QTest::ignoreMessage(QtDebugMsg,
            QRegularExpression("^create.*\"x{2000,2048}… \\(at least \\d+ bytes more\\)\\)$"));
        QVERIFY(!LineInfoListModel().createLineInfoModelListByCountry(reply, message));
    }

    void aRefusalLeavesItsReason()
    {
        QJsonObject refusal{{"code", 200}, {"msg", "no"}, {"data", QJsonArray{QJsonObject()}}};
        LineInfoListModel model;
        QString reason;
        QVERIFY(!model.createLineInfoModelListByCountry(refusal, reason) && reason == "no");
        reason.clear();
        QVERIFY(!model.createLineInfoModelList(refusal, reason) && reason == "no");
        QVERIFY(model.getLineInfoModelList().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLines)
#include "tst_lines.moc"
