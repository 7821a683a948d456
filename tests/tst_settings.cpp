#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QProcess>
#include <QQmlEngine>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

#include "settings/DataManager.h"

namespace {

template <typename... Values> void row(const char *name, const Values &...values)
{
    (QTest::newRow(name) << ... << values);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(not there)");
}

QByteArray json(const char *text) { return QByteArray(text).replace('\'', '"'); }

bool put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

// Calls an operation by its name, as the scene does.
bool call(const QString &operation, const QString &argument)
{
    bool result = false;
    return QMetaObject::invokeMethod(DataManager::getInstance(), qPrintable(operation),
               Q_RETURN_ARG(bool, result), Q_ARG(QString, argument))
        && result;
}

QString valueOf(const QString &member) // through its invokable getter
{
    const QString name = "get" + member.at(0).toUpper() + member.mid(1) + "()";
    DataManager *store = DataManager::getInstance();
    const QMetaObject *meta = store->metaObject();
    const QMetaMethod getter = meta->method(meta->indexOfMethod(qPrintable(name)));
    QVariant value(getter.returnType(), nullptr);
    getter.invoke(store, QGenericReturnArgument(getter.typeName(), value.data()));
    return value.toString();
}

QString valuesOf(const QStringList &members)
{
    QStringList values;
    for (const QString &member : members)
        values += valueOf(member);
    return values.join(QLatin1Char('|'));
}

QString usedAreas() // "area=count[line=count ] area=count[]"
{
    QString text;
    const QList<CommonUsedArea> areas = DataManager::getInstance()->getCommonUsedAreaList();
    for (const CommonUsedArea &area : areas) {
        text += QStringLiteral("%1=%2[").arg(area.lineArea).arg(area.usedNum);
        for (const CommonUsedLine &line : area.lineUsedList)
            text += QStringLiteral("%1=%2 ").arg(line.lineId).arg(line.usedNum);
        text += "] ";
    }
    return text;
}

} // namespace

class TestSettings : public QObject {
    Q_OBJECT

    QString path(const char *name) const { return m_folder + QLatin1String(name); }

    DataManager *m_store = nullptr;
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_folder; // ends in "/"

private slots:
    void init()
    {
        m_store = DataManager::getInstance();
        m_directory = std::make_unique<QTemporaryDir>();
        m_folder = m_directory->path() + QLatin1Char('/');
        QVERIFY(QDir::setCurrent(m_folder)); // where UpdateInfo.json goes
    }

    void freshStoreHasItsDefaults()
    {
        QCOMPARE(
            valuesOf({"isMinToTray", "isAutoLogin", "isVisitorLogin", "isBootUp", "isPopupTips",
                "speedLimit", "softVersion", "softShowVersion", "downloadUpdateVersion",
                "systemType", "tcpVpnPort", "udpVpnPort", "wssVpnPort", "driverVpnPort",
                "kcpVpnPort", "vornVpnPort", "p2pSwitch", "softUseLanguage"}),
            QStringLiteral("true|true|true|false|true|2|1|1.0.1|1.0|linux|3102|3101|3103|5000|2000|"
                           "5000|1|"));
        QCOMPARE(m_store->getDpiScale(), qApp->primaryScreen()->logicalDotsPerInch() / 96);
        QQmlEngine engine;
        QCOMPARE(virtualDataManager(&engine, nullptr), m_store);
        QCOMPARE(QQmlEngine::objectOwnership(m_store), QQmlEngine::CppOwnership);
    }

    // The store of this process is made already, so a copy of the program makes one elsewhere.
    void filesBesideTheProgramAreReadAtStart()
    {
        if (qEnvironmentVariableIsSet("VORN_TEST_IS_COPY")) {
            QCOMPARE(m_store->getUserName() + m_store->getChannel() + usedAreas(),
                QStringLiteral("me/store/Peru=2[7=2 ] "));
            return;
        }
        QVERIFY(put(path("VornData.json"), json("{'userName':'me/'}")));
        QVERIFY(put(path("Channel.json"), json("{'channel':'store/'}")));
        QVERIFY(put(path("CommonUsedLine.json"),
            json("[{'lineArea':'Peru','usedNum':2,'lineUsedList':[{'lineId':7,'usedNum':2}]}]")));
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), path("copy")));
        qputenv("VORN_TEST_IS_COPY", "1");
        const int failures = QProcess::execute(path("copy"), {QTest::currentTestFunction()});
        qunsetenv("VORN_TEST_IS_COPY");
        QCOMPARE(failures, 0);
    }

    void accessorsKeepWhatTheyAreGiven_data()
    {
        QTest::addColumn<int>("setter");
        const QMetaObject &meta = DataManager::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            if (meta.method(i).name().startsWith("set")
                && meta.method(i).name() != "setInstallPath")
                QTest::newRow(meta.method(i).name()) << i;
        // 19 pairs, 26 getters and a setter alone, 17 operations; two signals and a slot.
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 2 * 19 + 27 + 17 + 3);
    }

    void accessorsKeepWhatTheyAreGiven()
    {
        QFETCH(int, setter);
        const QMetaMethod method = m_store->metaObject()->method(setter);
        for (QVariant value : {QVariant(1), QVariant(0), QVariant(valueOf(method.name().mid(3)))}) {
            QVERIFY(value.convert(method.parameterType(0)));
            const QByteArray type = method.parameterTypes().at(0);
            QVERIFY(method.invoke(m_store, QGenericArgument(type, value.constData())));
            QCOMPARE(valueOf(method.name().mid(3)), value.toString());
        }
    }

    void everyFileComesBackByteForByte_data()
    {
        QTest::addColumn<QString>("subject"); // of the operations' names
        QTest::addColumn<QByteArray>("content"); // less the indentation
        row("VornData.json", "Data",
            json("{'installPath':'/opt/Vörn','isAutoLogin':false,'isBootUp':true,"
                 "'isFeedbackLine':false,'isInstallP2p':true,'isMinToTray':false,"
                 "'isPopupTips':true,'isPushPingLog':true,'isVisitorLogin':false,'session':'s-1',"
                 "'softUseLanguage':'_id','userName':'me','userPassword':'\\'s','vpnModel':3}"));
        row("VersionInfo.json", "VersionInfo",
            json("{'softShowVersion':'2.0','softVersion':'27'}"));
        row("CommonUsedLine.json", "CommonUsedLine",
            json("[{'lineArea':'Peru','lineUsedList':[{'lineId':9,'usedNum':1},{'lineId':7,"
                 "'usedNum':4}],'usedNum':5},{'lineArea':'','lineUsedList':[],'usedNum':2}]"));
    }

    void everyFileComesBackByteForByte()
    {
        QFETCH(QString, subject);
        QFETCH(QByteArray, content);
        const QString file = path(QTest::currentDataTag());
        QVERIFY(put(file, content));
        m_store->setCommonUsedAreaList({});
        QVERIFY(call(QString("read" + subject + "FromFile"), m_folder));
        QVERIFY(QFile::remove(file));
        QVERIFY(call(QString("write" + subject + "ToFile"), m_folder));
        const QJsonDocument document = QJsonDocument::fromJson(content);
        QCOMPARE(contentOf(file), document.isObject() ? document.toJson() : content);

        QVariantMap members = document.object().toVariantMap();
        members.remove("session"); // these two have no getter for the scene
        members.remove("installPath");
        for (auto member = members.cbegin(); member != members.cend(); ++member)
            QCOMPARE(valueOf(member.key()), member->toString());
    }

    void strangeSettingsFilesHaveStatedResults_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("members"); // isMinToTray, isAutoLogin, isVisitorLogin, userName
        const char unchanged[] = "true|true|true|before";
        row("visitor login only", json("{'isVisitorLogin':false}"), "false|false|false|");
        row("no visitor login", json("{'isMinToTray':true,'userName':'u'}"), "true|false|true|u");
        row("wrong types", json("{'isMinToTray':'true','isAutoLogin':1,'userName':5}"),
            "false|false|true|");
        row("zero byte", QByteArray("{\"userName\":\"z\"}\0}}", 18), "false|false|true|z");
        row("an array", json("[]"), unchanged);
        row("broken text", json("{'userName':"), unchanged);
        row("bytes", QByteArray("\x7f\x45LF\x02\x80\xff\xfe", 8), unchanged);
        row("deep nesting", QByteArray(100000, '['), unchanged);
        row("a million lines", QByteArray(1000000, '\n'), unchanged);
    }

    void strangeSettingsFilesHaveStatedResults()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, members);
        m_store->setIsMinToTray(true);
        m_store->setIsAutoLogin(true);
        m_store->setIsVisitorLogin(true);
        m_store->setUserName("before");
        QVERIFY(put(path("VornData.json"), content));
        QVERIFY(m_store->readDataFromFile(m_folder));
        QCOMPARE(valuesOf({"isMinToTray", "isAutoLogin", "isVisitorLogin", "userName"}), members);
    }

    void missingAndUnwritableFilesHaveStatedResults()
    {
        UpdateInfo offered;
        offered.updateUrl = QStringLiteral("http://update.vorn.example/2");
        QVERIFY(!m_store->readUpdateInfoFromFile());
        bool isWritten = false;
        QVERIFY(QMetaObject::invokeMethod(m_store, "writeUpdateInfoToFile",
            Q_RETURN_ARG(bool, isWritten), Q_ARG(UpdateInfo, offered)));
        QVERIFY(isWritten && valueOf("downloadUpdateUrl") != offered.updateUrl);
        QVERIFY(m_store->readUpdateInfoFromFile());
        QCOMPARE(valueOf("downloadUpdateUrl"), offered.updateUrl);

        QCOMPARE(mkfifo(qPrintable(path("VersionInfo.json")), 0600), 0);
        QVERIFY(QDir(m_folder).mkdir("VornData.json"));
        for (const QString &folder : {m_folder, path("UpdateInfo.json/"), path("nowhere/")}) {
            for (const char *reader :
                {"readDataFromFile", "readVersionInfoFromFile", "readCommonUsedLineFromFile"})
                QVERIFY2(!call(reader, folder), reader);
            for (const char *other : {"readChannel", "writeDataToFile", "writeVersionInfoToFile"})
                QVERIFY2(call(other, folder), other);
        }
        m_store->setCommonUsedAreaList({{"A", 1, {}}});
        QVERIFY(call("writeCommonUsedLineToFile", m_folder));
        QVERIFY(call("readCommonUsedLineFromFile", m_folder));
        QCOMPARE(usedAreas(), QStringLiteral("A=1[] A=1[] ")); // a reading appends
    }

    void passwordIsForTheOwnerOnlyAndSurvivesAFullDisk()
    {
        const QString target = path("target");
        QVERIFY(put(target, "{}"));
        QVERIFY(QFile::setPermissions(target, QFile::Permissions(0x6644)));
        QVERIFY(QFile::link(target, path("VornData.json")));
        m_store->setUserName("first");
        QVERIFY(call("writeDataToFile", m_folder));
        QCOMPARE(QFile::permissions(target), QFile::Permissions(0x6600));
        const QByteArray before = contentOf(target);
        QVERIFY(before.contains("first"));

        rlimit usual{}; // a limit on the size of files cuts a writing as a full disk does
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit full{100, usual.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &full), 0);
        m_store->setUserName("second");
        const bool isDone = call("writeDataToFile", m_folder);
        setrlimit(RLIMIT_FSIZE, &usual);
        QVERIFY(isDone);
        QCOMPARE(contentOf(target), before);
        QCOMPARE(QDir(m_folder).entryList(QDir::Files).size(), 2); // nothing half written is left
    }

    void languageChangesTextsAndCode_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        row("1", 1, "_zh_hk", "中文繁體", "快速安裝");
        row("2", 2, "_id", "Bahasa Indonesia", "Instal Cepat");
        row("3", 3, "_ru", "Русский", "Быстрая установка");
        row("7", 7, "_en", "", "Quick Install");
        row("4", 4, "_de", "Deutsch", "Schnellinstallation");
        row("-1", -1, "_en", "", "Quick Install");
        row("0", 0, "_en", "English", "Quick Install");
        row("no file", 1, "_en", "中文繁體", "Quick Install"); // keeps what was
    }

    void languageChangesTextsAndCode()
    {
        QFETCH(int, index);
        QFETCH(QString, code);
        QFETCH(QString, name);
        QFETCH(QString, text);
        const bool isThere = QByteArray(QTest::currentDataTag()) != "no file";
        if (!isThere)
            Q_CLEANUP_RESOURCE(internationalization);
        QTest::ignoreMessage(QtDebugMsg, isThere ? "load ret true" : "load ret false");
        const QSignalSpy changed(m_store, &DataManager::languageChanged);
        m_store->changeLanguage(index);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(valuesOf({"currentLanguageIndex", "softUseLanguage"}),
            QString(QString::number(index) + "|" + code));
        QCOMPARE(QCoreApplication::translate("main", "Quick Install"), text);
        QCOMPARE(m_store->languageTypeTransToInt(code), code == "_en" ? 0 : index);
        QCOMPARE(m_store->languageTypeTransToInt(code.toUpper()), 0);
        const QByteArray gbk = QTextCodec::codecForName("GBK")->fromUnicode(name);
        QCOMPARE(m_store->languageTypeTransToString(index), QString::fromUtf8(gbk));
    }

    void questionsComeInTheLanguageAsked()
    {
        m_store->setLineFeedbackQuestionList({{4, "slow", "ar", "de", "en", "", "zh", ""}, {}});
        const QMap<QString, QString> texts{{"_en", "en"}, {"_de", "de"}, {"_ru", "en"},
            {"_zh_hk", "zh"}, {"_ar", "ar"}, {"_id", "en"}}; // there is no Russian text
        QPointer<QObject> previous;
        for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
            const auto questions = m_store->getLineFeekbackQuestionByLauguage(text.key());
            QCOMPARE(questions.size(), 2);
            QCOMPARE(questions[0]->property("id").toInt(), 4);
            QCOMPARE(questions[0]->property("sn").toString(), QStringLiteral("slow"));
            QCOMPARE(questions[0]->property("questions").toString(), *text);
            QCOMPARE(questions[0]->parent(), m_store); // or the engine would collect it
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!previous);
            previous = questions[0];
        }
    }

    void usesAreCountedAndTheFourthAreaIsDropped()
    {
        m_store->setCommonUsedAreaList({});
        for (const auto &[line, area] :
            {std::pair(5, "Peru"), {5, "Peru"}, {6, "Peru"}, {5, "Chad"}})
            m_store->changeLineUsedNum(line, area);
        m_store->deleteCommonUsedLine(5);
        QCOMPARE(usedAreas(), QStringLiteral("Peru=3[6=1 5=2 ] Chad=1[5=1 ] "));

        m_store->setCommonUsedAreaList(
            {{"A", 3, {}}, {"B", 9, {}}, {"C", 5, {}}, {"D", 7, {}}, {"E", 8, {}}, {"F", 4, {}}});
        m_store->changeLineUsedNum(1, "C"); // to 6, the fourth place
        QCOMPARE(usedAreas(), QStringLiteral("B=9[] E=8[] D=7[] F=4[] A=3[] "));
        m_store->setCommonUsedAreaList({{"A", std::numeric_limits<int>::max(), {}}, {"B", 9, {}}});
        m_store->changeLineUsedNum(2, "A");
        QCOMPARE(usedAreas(), QStringLiteral("A=2147483647[2=1 ] B=9[] "));

        QList<CommonUsedArea> hostile;
        for (int i = 0; i < 100000; ++i)
            hostile.append({QString(), i, {}});
        m_store->setCommonUsedAreaList(hostile);
        QVERIFY(call("writeCommonUsedLineToFile", m_folder)); // within the program's time limit
        QCOMPARE(m_store->getCommonUsedAreaList().constFirst().usedNum, 99999);
    }

    void signInResultsAreTakenApart_data()
    {
        QTest::addColumn<QString>("members"); // results, name, id, nick, picture
        row("x --gl:email=a@b,id=7,name=A%20B%20C,picture=http://p/1=s9,name=Z%20",
            "10 a@b|7|Z |http://p/1");
        row("--GL:email=a@b", "00 u|i|n|p");
        row("--gl email=a@b", "10 u|i|n|p");
        row("--gl:id=7--gl:id=8,name=N", "10 u|7|n|p");
        row("--gl:picture=http://video/?a=5", "10 u|http://video/?a|n|p");
        row("--gl:email,id=,name", "10 |||p");
        row("--fb:id=7,email=a@b,name=A%20B,picture=http://p/?x=1,2",
            "01 a@b|7|A B|http://p/?x=1,2");
        row("--fb:name=N,email", "01 u|i|N|p");
        row("--fbid=7,picture=q", "01 u|i|n|p");
    }

    void signInResultsAreTakenApart()
    {
        const QString info = QTest::currentDataTag();
        QFETCH(QString, members);
        m_store->setUserName("u");
        m_store->setUserGoogleId("i");
        m_store->setUserNickName("n");
        m_store->setUserGooglePicture("p");
        const QString google = call("analysisGoogleInfo", info) ? "1" : "0";
        const QString facebook = call("analysisFacebookInfo", info) ? "1 " : "0 ";
        QCOMPARE(QString(google + facebook
                     + valuesOf({"userName", "userGoogleId", "userNickName", "userGooglePicture"})),
            members);
    }
};

QTEST_MAIN(TestSettings)
#include "tst_settings.moc"
