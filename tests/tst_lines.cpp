#include "Spies.h"
#include "Support.h"
#include "lines/Coordinates.h"
#include "lines/LineCatalogue.h"
#include "lines/LineInfo.h"
#include "lines/LineInfoListModel.h"

static const QMetaObject &meta = LineInfo::staticMetaObject;

// The values that are not as in a new record, in the order of the properties, then after "<" the
// lines, after "|" the entries that are no lines.
static QString described(const QObject *object)
{
    const auto *record = static_cast<const LineInfo *>(object);
    QStringList values;
    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
        const QVariant value = meta.property(index).read(record);
        if (value.canConvert<QString>() && value != QVariant(value.userType(), nullptr))
            values.append(value.toString());
    }
    for (QObject *line : record->getChildItem()) {
        values.append(record->getChildItem4Load().contains(line) ? "<" : "|");
        values.append(described(line));
    }
    return values.join(' ');
}

class TestLines : public QObject {
    Q_OBJECT

private slots:
    void recordsAnnounceEveryWriteWithSignalsInTheirOrder()
    {
        const QHash<int, QVariant> values = {{QMetaType::Int, 1}, {QMetaType::Double, -2.5},
            {QMetaType::Bool, true}, {QMetaType::QString, "text"},
            {qMetaTypeId<QList<QObject *>>(), QVariant::fromValue(QList<QObject *>{this})}};
        QStringList odd;
        for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index) {
            const QMetaProperty property = meta.property(index);
            const QVariant value = values.value(property.userType());
            LineInfo record;
            QCOMPARE(property.read(&record), QVariant(property.userType(), nullptr));
            QVERIFY(property.write(&record, value));
            QCOMPARE(property.read(&record), value);
            const Spies spies = spiesOn(&record);
            QVERIFY(property.write(&record, value));
            const QString signal = property.notifySignal().methodSignature();
            if (written(spies) != signal)
                odd += property.name() + (" " + signal) + " " + written(spies);
        }
        QCOMPARE(odd.join(' '), QString("qTransPort transIpChanged() transPortChanged()"));
        QCOMPARE(LineInfo().property("qIsCurrentUse").userType(), int{QMetaType::Int});

        QByteArrayList names;
        for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
            names.append(meta.method(index).name().replace("Changed", ""));
        QCOMPARE(names.join(' '),
            QByteArray("lineId lineArea lineName lineImage childItem level serverIp serverPort "
                       "serverNum lon lat ping isCurrentUse domain usedNum lineUuid isRecommend "
                       "transDomain transIp transPort lineLoad childItem4Load"));
    }

    void serverListBecomesACatalogue_data()
    {
        const Table<bool, QString, QStringList> row; // by country, reply, areas or the refusal
        // clang-format off
        row("a refusal", true, "{'code':200,'msg':'no','data':[{'name_en':'A'}]}", {"no"});
        row("a lone server", true, "{'data':[{'name_en':'A','img':'i','lon':'-1.5','lat':7,'servers':[{'country_id':'A','id':3}]}]}", {"A i 1 -1.5 7 < 3 A #1 1 3000"});
        row("each country counts its servers anew", true, "{'data':[{'name_en':'A','servers':[{'country_id':1,'id':'8'},{'country_id':'B'},{'country_id':'1'}]},"
            "{'servers':[{'country_id':'B','id':4.5},{'id':5,'country_id':'B','more':[1]}]}]}",
            {"A 4 | A Fastest 1 101 < 8 1 #1 1 3000 < B #1 1 3000 < 1 #2 1 3000", "3 | Fastest 1 101 < B #1 1 3000 < 5 B #2 1 3000"});
        row("servers without a country", true, "{'data':[{'servers':[{'name':'N','id':5},{'name':'N','id':'6x','country_id':''},{'country_id':[]}]},{}]}",
            {"4 | Fastest 1 101 < 5 N #5 1 3000 < N #6x 1 3000 <  # 1 3000", ""});
        row("every value of a server", true, "{'data':[{'servers':[{'country_id':'L','id':1,'name_en':'Stadt','national_flag':'l.png','ip':'192.0.2.1',"
            "'domain':'l.example.com','uuid':'u-1','load':0.25,'trans_domain':'r.example.com','trans_ip':'192.0.2.9','trans_port':8443,"
            "'srv_location':'{\\\\\\u0022lon\\\\\\u0022:\\\\\\u002213.4\\\\\\u0022,\\u0022lat\\u0022:52.5}'}]}]}",
            {"1 < 1 Stadt L #1 l.png u-1 1 192.0.2.1 3000 13.4 52.5 l.example.com r.example.com 192.0.2.9 8443 0.25"});
        row("values of other types", true, "{'data':[{'lon':[],'name_en':1,'servers':[{'name':5,'name_en':[],'ip':1,'load':'0.25','uuid':true,'domain':{},"
            "'trans_port':'443','srv_location':{'lon':1}}]}]}", {"1 <  # 1 3000 443"});
        row("a flat list", false, "{'data':[{'name':'A','line':[{'name':'a','id':'7','national_flag':'a.png','ip':'192.0.2.1'},{'id':8}]},{}]}",
            {"A | 7 A a a.png 1 192.0.2.1 3000 | 8 A 1 3000", ""});
        row("a flat list refused", false, "{'code':-1,'msg':'later','data':[{}]}", {"later"});
        // clang-format on
    }

    void serverListBecomesACatalogue()
    {
        const auto [isByCountry, reply, expected] = Table<bool, QString, QStringList>::fetch();
        QJsonObject object = QJsonDocument::fromJson(json(reply)).object();
        LineInfoListModel model;
        QString message;
        const bool accepted = isByCountry ? model.createLineInfoModelListByCountry(object, message)
                                          : model.createLineInfoModelList(object, message);
        LineCatalogue catalogue; // releases the records
        catalogue.replace(model.getLineInfoModelList());
        QStringList areas = accepted ? QStringList() : QStringList(message);
        for (const QObject *area : catalogue.areas())
            areas.append(described(area));
        QCOMPARE(areas, expected);
    }

    // The quick reading and the JSON parser give the same answers.
    void coordinatesAreRead()
    {
        const QVector<std::tuple<const char *, double, double>> rows{
            {"{'lon':'13.4050','lat':'-52.52'}", 13.405, -52.52}, {"{'lon':0.1,'lat':-7}", 0.1, -7},
            {" {'lat' : '2', 'lon' : 1e1} ", 10, 2},
            {"{'lon':0.12345678901234567,'lat':1}", 0.12345678901234567, 1},
            {"{'lon':'007.5','lat':'1'}", 7.5, 1}, {"{'lon':007.5,'lat':1}", 0, 0},
            {"{'lon':'3','lat':'4','city':'x'}", 3, 4}, {"{'lon':'east','lat':true}", 0, 0},
            {"{'lon':'3','lat':'4'", 0, 0}, {"{'lon':'3','lat':'4'}}", 0, 0}};
        for (const auto &[text, lon, lat] : rows) {
            const Coordinates read = coordinatesOf(json(text));
            QVERIFY2(read.lon == lon && read.lat == lat, text);
        }
    }
};

QTEST_GUILESS_MAIN(TestLines)
#include "tst_lines.moc"
