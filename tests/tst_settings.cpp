#include "Support.h"
#include "settings/DataManager.h"

#include <QQmlEngine>
#include <QScreen>

#include <sys/stat.h>

namespace {

struct StoredFile {
    QString name;
    QString subject; // of the operations that read and write it
    QByteArray content; // less the indentation
};

struct StrangeFile {
    QByteArray content;
    bool isMinToTray;
    bool isAutoLogin;
    bool isVisitorLogin;
    QString userName;
};

struct Person {
    QString email;
    QString id;
    QString name;
    QString picture;
};

struct SignIn {
    QString argument;
    bool isGoogle;
    bool isFacebook;
    Person found;
};

// Who is known before the argument is read.
const Person nobody{"u", "i", "n", "p"};

struct LanguageChoice {
    int index;
    QString code;
    QString storedName;
    QString installButton;
    bool hasTranslations = true;
};

} // namespace

class TestSettings : public QObject {
    Q_OBJECT

    DataManager &m_store = *DataManager::getInstance();
    QQmlEngine m_engine;
    std::unique_ptr<QTemporaryDir> m_directory;

    // The values of operations, called by their names as a scene does.
    QString js(const QString &calls)
    {
        return m_engine.evaluate("with (store) [" + calls + "].join('|')").toString();
    }

    QString usedAreas() const // "area=count line=count area=count"
    {
        QStringList text;
        for (const CommonUsedArea &area : m_store.getCommonUsedAreaList()) {
            text += area.lineArea + '=' + QString::number(area.usedNum);
            for (const CommonUsedLine &line : area.lineUsedList)
                text += QString("%1=%2").arg(line.lineId).arg(line.usedNum);
        }
        return text.join(' ');
    }

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_directory->path())); // where UpdateInfo.json goes
        m_engine.globalObject().setProperty("here", QString(m_directory->path() + '/'));
        m_engine.globalObject().setProperty("store", m_engine.newQObject(&m_store));
    }

    // The store of this process is made already, so a copy of the program makes one elsewhere.
    void filesBesideTheProgramAreReadAtStart()
    {
        if (qEnvironmentVariableIsSet("VORN_TEST_IS_COPY")) {
            QCOMPARE(m_store.getUserName() + usedAreas(), "me/Peru=2");
            QCOMPARE(m_store.getChannel(), "store/");
            return;
        }
        QVERIFY(put("VornData.json", json("{'userName':'me/'}")));
        QVERIFY(put("Channel.json", json("{'channel':'store/'}")));
        QVERIFY(put("CommonUsedLine.json", json("[{'lineArea':'Peru','usedNum':2}]")));
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), "copy"));
        qputenv("VORN_TEST_IS_COPY", "1");
        const int failures = QProcess::execute("./copy", {QTest::currentTestFunction()});
        qunsetenv("VORN_TEST_IS_COPY");
        QCOMPARE(failures, 0);
        QCOMPARE(virtualDataManager(&m_engine, nullptr), &m_store);
        QCOMPARE(QQmlEngine::objectOwnership(&m_store), QQmlEngine::CppOwnership);
        QCOMPARE(m_store.getDpiScale(), qApp->primaryScreen()->logicalDotsPerInch() / 96);
    }

    void accessorsKeepWhatTheyAreGiven()
    {
        const QMetaObject &meta = DataManager::staticMetaObject;
        QStringList kept;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QByteArray name = meta.method(i).name();
            if (!name.startsWith("set") || name == "setInstallPath")
                continue;
            const QString calls = "was = g%1(), s%1(1), g%1() == 1, s%1(0), g%1() == 0, s%1(was)";
            QVERIFY2(js(calls.arg(name.mid(1).constData())).endsWith("|true||true|"), name);
            kept += name;
        }
        QVERIFY(kept.contains("setSpeedLimit") && kept.contains("setIsVisitorLogin"));
    }

    void everyFileComesBackByteForByte_data()
    {
        const Rows<StoredFile> row;
        row("settings",
            {"VornData.json", "Data",
                json("{'installPath':'/opt/Vörn','isAutoLogin':false,'isBootUp':true,"
                     "'isFeedbackLine':false,'isInstallP2p':true,'isMinToTray':false,"
                     "'isPopupTips':false,'isPushPingLog':true,'isVisitorLogin':false,"
                     "'session':'s-1','softUseLanguage':'_id','userName':'me',"
                     "'userPassword':'\\'s','vpnModel':3}")});
        row("version",
            {"VersionInfo.json", "VersionInfo",
                json("{'softShowVersion':'2.0','softVersion':'27'}")});
        row("frequently used lines",
            {"CommonUsedLine.json", "CommonUsedLine",
                json("[{'lineArea':'Peru','lineUsedList':[{'lineId':9,'usedNum':1},"
                     "{'lineId':7,'usedNum':4}],'usedNum':5},"
                     "{'lineArea':'','lineUsedList':[],'usedNum':2}]")});
    }

    void everyFileComesBackByteForByte()
    {
        const auto [file, subject, content] = Rows<StoredFile>::fetch();
        QVERIFY(put(file, content));
        m_store.setCommonUsedAreaList({});
        QCOMPARE(js("read" + subject + "FromFile(here)"), "true");
        QVERIFY(QFile::remove(file));
        QCOMPARE(js("write" + subject + "ToFile(here)"), "true");
        const QJsonDocument document = QJsonDocument::fromJson(content);
        QCOMPARE(contentOf(file), document.isObject() ? document.toJson() : content);
        const QStringList keys = document.object().keys();
        for (const QString &key : keys)
            if (key != "session" && key != "installPath") // these have no getter for the scene
                QCOMPARE(js("get" + key.left(1).toUpper() + key.mid(1) + "()"),
                    document[key].toVariant().toString());
    }

    void strangeSettingsHaveStatedResults_data()
    {
        const Rows<StrangeFile> row; // all true and "u" before
        row("visitor login only", {json("{'isVisitorLogin':false}"), false, false, false, ""});
        row("no visitor login",
            {json("{'isMinToTray':true,'userName':'v'}"), true, false, true, "v"});
        row("wrong types",
            {json("{'isMinToTray':'true','isAutoLogin':1,'userName':5}"), false, false, true, ""});
        row("broken text", {json("{'userName':"), true, true, true, "u"});
    }

    void strangeSettingsHaveStatedResults()
    {
        const StrangeFile given = Rows<StrangeFile>::fetch();
        js("setIsMinToTray(true), setIsAutoLogin(true), setIsVisitorLogin(true), setUserName('u')");
        QVERIFY(put("VornData.json", given.content));
        QCOMPARE(js("readDataFromFile(here)"), "true");
        QCOMPARE(m_store.getIsMinToTray(), given.isMinToTray);
        QCOMPARE(m_store.getIsAutoLogin(), given.isAutoLogin);
        QCOMPARE(m_store.getIsVisitorLogin(), given.isVisitorLogin);
        QCOMPARE(m_store.getUserName(), given.userName);
    }

    void signInResultsAreTaken_data()
    {
        const Rows<SignIn> row;
        row("Google: the later name, the picture up to its second \"=\"",
            {"x --gl:email=a@b,id=7,name=A%20B%20C,picture=http://p/1=s9,name=Z%20", true, false,
                {"a@b", "7", "Z ", "http://p/1"}});
        row("Google: two markers",
            {"--gl:id=7--gl:id=8,name=N", true, false, {"u", "7", "n", "p"}});
        row("Google: fields without values",
            {"--gl:email,id=,name", true, false, {"", "", "", "p"}});
        row("Facebook: the picture with its commas",
            {"--fb:id=7,email=a@b,name=A%20B,picture=http://p/?x=1,2", false, true,
                {"a@b", "7", "A B", "http://p/?x=1,2"}});
        row("Facebook: a marker without colon", {"--fbid=7,picture=q", false, true, nobody});
    }

    void signInResultsAreTaken()
    {
        const SignIn given = Rows<SignIn>::fetch();
        m_store.setUserName(nobody.email);
        m_store.setUserGoogleId(nobody.id);
        m_store.setUserNickName(nobody.name);
        m_store.setUserGooglePicture(nobody.picture);
        m_engine.globalObject().setProperty("argument", given.argument);
        QCOMPARE(js("analysisGoogleInfo(argument)"), QVariant(given.isGoogle).toString());
        QCOMPARE(js("analysisFacebookInfo(argument)"), QVariant(given.isFacebook).toString());
        QCOMPARE(m_store.getUserName(), given.found.email);
        QCOMPARE(m_store.getUserGoogleId(), given.found.id);
        QCOMPARE(m_store.getUserNickName(), given.found.name);
        QCOMPARE(m_store.getUserGooglePicture(), given.found.picture);
    }

    void missingAndUnwritableFilesHaveStatedResults()
    {
        UpdateInfo offered;
        offered.updateUrl = QStringLiteral("http://update.vorn.example/2");
        m_engine.globalObject().setProperty("offered", m_engine.toScriptValue(offered));
        QCOMPARE(js("readUpdateInfoFromFile(), writeUpdateInfoToFile(offered), "
                    "getDownloadUpdateUrl() == 'http://update.vorn.example/2', "
                    "readUpdateInfoFromFile(), getDownloadUpdateUrl()"),
            "false|true|false|true|" + offered.updateUrl);
        QCOMPARE(mkfifo("VersionInfo.json", 0600), 0);
        QVERIFY(QDir().mkdir("VornData.json"));
        const QString calls =
            "readDataFromFile(f), readVersionInfoFromFile(f), readChannel(f), "
            "readCommonUsedLineFromFile(f), writeDataToFile(f), writeVersionInfoToFile(f)";
        for (const char *folder : {"", "UpdateInfo.json/", "nowhere/"})
            QCOMPARE(js(QString(calls).replace("f)", QString("here + '%1')").arg(folder))),
                "false|false|true|false|true|true");
        QVERIFY(!QFileInfo("VersionInfo.json").isFile()); // a pipe is not replaced
        m_store.setCommonUsedAreaList({{"A", 1, {}}});
        js("writeCommonUsedLineToFile(here), readCommonUsedLineFromFile(here)");
        QCOMPARE(usedAreas(), "A=1 A=1"); // a reading appends
    }

    void passwordIsForTheOwnerOnly()
    {
        QVERIFY(put("target", "{}") && QFile::link("target", "VornData.json"));
        QVERIFY(QFile::setPermissions("target", QFile::Permissions(0x6644)));
        QCOMPARE(js("setUserName('first'), writeDataToFile(here)"), "|true");
        QCOMPARE(QFile::permissions("target"), QFile::Permissions(0x6600));
        QVERIFY(contentOf("target").contains("first"));
    }

    void languageChangesTextsAndCode_data()
    {
        const Rows<LanguageChoice> row;
        row("Chinese", {1, "_zh_hk", "中文繁體", "快速安裝"});
        row("Russian", {3, "_ru", "Русский", "Быстрая установка"});
        row("above the list: English", {7, "_en", "", "Quick Install"});
        row("German", {4, "_de", "Deutsch", "Schnellinstallation"});
        row("English", {0, "_en", "English", "Quick Install"});
        row("no translations: what was stays", {1, "_en", "中文繁體", "Quick Install", false});
    }

    void languageChangesTextsAndCode()
    {
        const LanguageChoice choice = Rows<LanguageChoice>::fetch();
        if (!choice.hasTranslations)
            Q_CLEANUP_RESOURCE(internationalization);
        QTest::ignoreMessage(
            QtDebugMsg, choice.hasTranslations ? "load ret true" : "load ret false");
        const QSignalSpy changed(&m_store, &DataManager::languageChanged);
        js(QString("changeLanguage(%1)").arg(choice.index));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(js("getCurrentLanguageIndex()"), QString::number(choice.index));
        QCOMPARE(js("getSoftUseLanguage()"), choice.code);
        QCOMPARE(QCoreApplication::translate("main", "Quick Install"), choice.installButton);
        const int indexOfCode = choice.code == "_en" ? 0 : choice.index;
        QCOMPARE(m_store.languageTypeTransToInt(choice.code), indexOfCode);
        QCOMPARE(m_store.languageTypeTransToInt(choice.code.toUpper()), 0);
        const QByteArray gbk = QTextCodec::codecForName("GBK")->fromUnicode(choice.storedName);
        QCOMPARE(m_store.languageTypeTransToString(choice.index), QString::fromUtf8(gbk));
        QVERIFY(js("getLanguageList()").startsWith("English,中文繁體,Indonesia,Русский,Deutsch"));
    }

    void questionsComeInTheLanguageAsked()
    {
        m_store.setLineFeedbackQuestionList({{4, "slow", "ar", "de", "en", "", "zh", ""}, {}});
        QPointer<QObject> previous;
        for (const QString row : {"_en en", "_de de", "_ru en", "_zh_hk zh", "_ar ar", "_id en"}) {
            const auto questions = m_store.getLineFeekbackQuestionByLauguage(row.split(' ')[0]);
            QVERIFY(questions.size() == 2 && questions[0]->property("id") == 4);
            QCOMPARE(questions[0]->property("sn"), "slow");
            QCOMPARE(questions[0]->property("questions"), row.split(' ')[1]);
            QCOMPARE(questions[0]->parent(), &m_store); // or the engine would collect it
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!previous);
            previous = questions[0];
        }
    }

    void usesAreCountedAndTheFourthAreaIsDropped()
    {
        m_store.setCommonUsedAreaList({});
        js("changeLineUsedNum(5, 'Peru'), changeLineUsedNum(5, 'Peru'), "
           "changeLineUsedNum(6, 'Peru'), changeLineUsedNum(5, 'Chad'), deleteCommonUsedLine(5)");
        QCOMPARE(usedAreas(), "Peru=3 6=1 5=2 Chad=1 5=1");
        m_store.setCommonUsedAreaList(
            {{"A", 3, {}}, {"B", 9, {}}, {"C", 5, {}}, {"D", 7, {}}, {"E", 8, {}}, {"F", 4, {}}});
        m_store.changeLineUsedNum(1, "C"); // to 6, the fourth place
        QCOMPARE(usedAreas(), "B=9 E=8 D=7 F=4 A=3");
        m_store.setCommonUsedAreaList({{"A", std::numeric_limits<int>::max(), {}}, {"B", 9, {}}});
        m_store.changeLineUsedNum(2, "A");
        QCOMPARE(usedAreas(), "A=2147483647 2=1 B=9");
    }
};

QTEST_MAIN(TestSettings)
#include "tst_settings.moc"
