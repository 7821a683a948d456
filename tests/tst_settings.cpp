#include "Manual.h"
#include "settings/DataManager.h"

#include <QQmlEngine>
#include <QScreen>

#include <sys/stat.h>

namespace {

struct StoredFile {
    QString name;
    QString subject; // of the operations that read and write it
    QByteArray content; // less the indentation
    QFile::Permissions permissions;
};

const char manual[] = "scene-interface.md";
constexpr QFile::Permissions ownerOnly(0x6600);
constexpr QFile::Permissions usual(0x6644);

} // namespace

class TestSettings : public QObject {
    Q_OBJECT

    DataManager *m_store = nullptr;
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
        for (const CommonUsedArea &area : m_store->getCommonUsedAreaList()) {
            text += area.lineArea + '=' + QString::number(area.usedNum);
            for (const CommonUsedLine &line : area.lineUsedList)
                text += QString("%1=%2").arg(line.lineId).arg(line.usedNum);
        }
        return text.join(' ');
    }

private slots:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(QCoreApplication::applicationDirPath()));
        QVERIFY(put("VornData.json", json("{'userName':'me/'}")));
        QVERIFY(put("Channel.json", json("{'channel':'store/'}")));
        QVERIFY(put("CommonUsedLine.json", json("[{'lineArea':'Peru','usedNum':2}]")));
        m_store = DataManager::getInstance();
        QCOMPARE(virtualDataManager(&m_engine, nullptr), m_store);
        QCOMPARE(QQmlEngine::objectOwnership(m_store), QQmlEngine::CppOwnership);
        m_engine.globalObject().setProperty("store", m_engine.newQObject(m_store));
    }

    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_directory->path())); // where UpdateInfo.json goes
        m_engine.globalObject().setProperty("here", QString(m_directory->path() + '/'));
    }

    void theStartReadsFilesBesideTheProgram()
    {
        QCOMPARE(m_store->getUserName() + usedAreas(), "me/Peru=2");
        QCOMPARE(m_store->getChannel(), "store/");
        QCOMPARE(m_store->getDpiScale(), qApp->primaryScreen()->logicalDotsPerInch() / 96);
    }

    void accessorsKeepWhatTheyAreGiven()
    {
        const QMetaObject &meta = DataManager::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QByteArray name = meta.method(i).name();
            if (!name.startsWith("set") || name == "setInstallPath")
                continue;
            const QString calls = "was = g%1(), s%1(1), g%1() == 1, s%1(0), g%1() == 0, s%1(was)";
            QVERIFY2(js(calls.arg(name.mid(1).constData())).endsWith("|true||true|"), name);
        }
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
                     "'userPassword':'\\'s','vpnModel':3}"),
                ownerOnly});
        row("version",
            {"VersionInfo.json", "VersionInfo",
                json("{'softShowVersion':'2.0','softVersion':'27'}"), usual});
        row("frequently used lines",
            {"CommonUsedLine.json", "CommonUsedLine",
                json("[{'lineArea':'Peru','lineUsedList':[{'lineId':9,'usedNum':1},"
                     "{'lineId':7,'usedNum':4}],'usedNum':5},"
                     "{'lineArea':'','lineUsedList':[],'usedNum':2}]"),
                usual});
    }

    void everyFileComesBackByteForByte()
    {
        const auto [file, subject, content, permissions] = Rows<StoredFile>::fetch();
        QVERIFY(put(file, content));
        m_store->setCommonUsedAreaList({});
        QCOMPARE(js("read" + subject + "FromFile(here)"), "true");
        QVERIFY(QFile::remove(file));
        QCOMPARE(js("write" + subject + "ToFile(here)"), "true");
        QCOMPARE(QFile::permissions(file), permissions);
        const QJsonDocument document = QJsonDocument::fromJson(content);
        QCOMPARE(contentOf(file), document.isObject() ? document.toJson() : content);
        const QStringList keys = document.object().keys();
        for (const QString &key : keys)
            if (key != "session" && key != "installPath") // these have no getter for the scene
                QCOMPARE(js("get" + key.left(1).toUpper() + key.mid(1) + "()"),
                    document[key].toVariant().toString());
    }

    void settingsAreReadAsTheManualSays()
    {
        for (const QStringList &cells : tableBelow("### What a reading makes of a file", manual)) {
            js("setIsAutoLogin(true), setIsVisitorLogin(true)");
            QVERIFY(put("VornData.json", codeIn(cells[0])[0].toUtf8() + '\0'));
            QTest::ignoreMessage(QtDebugMsg, qPrintable("line:" + codeIn(cells[0])[0]));
            QCOMPARE(js("readDataFromFile(here)"), "true");
            QCOMPARE(js("getIsAutoLogin()"), codeIn(cells[1])[0]);
            QCOMPARE(js("getIsVisitorLogin()"), codeIn(cells[2])[0]);
        }
    }

    void signInResultsAreTakenAsTheManualSays_data()
    {
        const Rows<QStringList> row;
        for (const QStringList &cells : tableBelow("### What a browser hands back", manual))
            row(qPrintable(cells[0]), cells);
    }

    void signInResultsAreTakenAsTheManualSays()
    {
        const QStringList cells = Rows<QStringList>::fetch();
        const auto code = [&cells](int column) { return codeIn(cells[column]).join(""); };
        m_store->analysisFacebookInfo("--fb:email=u,id=i,name=n,picture=p");
        m_engine.globalObject().setProperty("text", code(0));
        QCOMPARE(js("analysisGoogleInfo(text)") == "true", cells[1] == " Google ");
        QCOMPARE(js("analysisFacebookInfo(text)") == "true", cells[1] == " Facebook ");
        QCOMPARE(m_store->getUserName(), code(2));
        QCOMPARE(m_store->getUserGoogleId(), code(3));
        QCOMPARE(m_store->getUserNickName(), code(4));
        QCOMPARE(m_store->getUserGooglePicture(), code(5));
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
        m_store->setCommonUsedAreaList({{"A", 1, {}}});
        js("writeCommonUsedLineToFile(here), readCommonUsedLineFromFile(here)");
        QCOMPARE(usedAreas(), "A=1 A=1"); // a reading appends
    }

    void languageChangesTextsAndCode_data()
    {
        const Rows<QStringList> row;
        for (const QStringList &cells : tableBelow("### The languages", manual))
            row(qPrintable(cells[0]), cells);
    }

    void languageChangesTextsAndCode()
    {
        const QStringList cells = Rows<QStringList>::fetch();
        const auto code = [&cells](int column) { return codeIn(cells[column]).join(""); };
        const int index = code(0).toInt();
        const QSignalSpy changed(m_store, &DataManager::languageChanged);
        QTest::ignoreMessage(QtDebugMsg, "load ret true");
        js("changeLanguage(" + code(0) + ")");
        QCOMPARE(changed.size(), 1);
        QCOMPARE(m_store->getCurrentLanguageIndex(), index);
        QCOMPARE(m_store->getSoftUseLanguage(), code(1));
        QCOMPARE(m_store->languageTypeTransToInt(code(1)), std::max(index, 0));
        QCOMPARE(m_store->languageTypeTransToInt(code(1).toUpper()), 0);
        QCOMPARE(m_store->getLanguageList().value(index), code(2));
        const QByteArray gbk = QTextCodec::codecForName("GBK")->fromUnicode(code(3));
        QCOMPARE(m_store->languageTypeTransToString(index), QString::fromUtf8(gbk));
        QCOMPARE(QCoreApplication::translate("main", "Quick Install"), code(4));
        m_store->changeLanguage(m_store->getLanguageList().size()); // one too many: English
        QCOMPARE(m_store->getSoftUseLanguage(), "_en");
    }

    void questionsComeInTheLanguageAsked()
    {
        m_store->setLineFeedbackQuestionList({{4, "slow", "ar", "de", "en", "", "zh", ""}, {}});
        const QHash<QString, QString> textByLanguage{
            {"_en", "en"}, {"_de", "de"}, {"_ru", "en"}, {"_zh_hk", "zh"}, {"_ar", "ar"}};
        QPointer<QObject> previous;
        for (auto asked = textByLanguage.begin(); asked != textByLanguage.end(); ++asked) {
            const auto questions = m_store->getLineFeekbackQuestionByLauguage(asked.key());
            QVERIFY(questions.size() == 2 && questions[0]->property("id") == 4);
            QCOMPARE(questions[0]->property("sn"), "slow");
            QCOMPARE(questions[0]->property("questions"), *asked);
            QCOMPARE(questions[0]->parent(), m_store); // or the engine would collect it
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!previous);
            previous = questions[0];
        }
    }

    void usesAreCountedAndTheFourthAreaIsDropped()
    {
        m_store->setCommonUsedAreaList({});
        js("changeLineUsedNum(5, 'Peru'), changeLineUsedNum(5, 'Peru'), "
           "changeLineUsedNum(6, 'Peru'), changeLineUsedNum(5, 'Chad'), deleteCommonUsedLine(5)");
        QCOMPARE(usedAreas(), "Peru=3 6=1 5=2 Chad=1 5=1");
        m_store->setCommonUsedAreaList(
            {{"A", 3, {}}, {"B", 9, {}}, {"C", 5, {}}, {"D", 7, {}}, {"E", 8, {}}, {"F", 4, {}}});
        m_store->changeLineUsedNum(1, "C"); // to 6, the fourth place
        QCOMPARE(usedAreas(), "B=9 E=8 D=7 F=4 A=3");
        m_store->setCommonUsedAreaList({{"A", std::numeric_limits<int>::max(), {}}, {"B", 9, {}}});
        m_store->changeLineUsedNum(2, "A");
        QCOMPARE(usedAreas(), "A=2147483647 2=1 B=9");
    }
};

QTEST_MAIN(TestSettings)
#include "tst_settings.moc"
