#include "OtherUser.h"
#include "Support.h"
#include "base/Deployment.h"
#include "installer/AddressBlocks.h"
#include "installer/CpuSnapshot.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QApplication>
#include <QDesktopServices>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Mounts and interfaces of its own for this process, before it has threads: empty directories in
// the place of those for entries. Returns why not.
QByteArray privateHost()
{
    const uid_t uid = geteuid();
    const gid_t gid = getegid();
    if (unshare(CLONE_NEWNS | CLONE_NEWNET | (uid == 0 ? 0 : CLONE_NEWUSER)) != 0)
        return ("unshare: " + qt_error_string()).toUtf8();
    if (uid != 0) {
        put("/proc/self/setgroups", "deny");
        put("/proc/self/uid_map", "0 " + QByteArray::number(uid) + " 1");
        put("/proc/self/gid_map", "0 " + QByteArray::number(gid) + " 1");
    }
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || mount("none", "/usr/share/applications", "tmpfs", 0, nullptr) != 0
        || mount("none", "/etc/xdg", "tmpfs", 0, nullptr) != 0
        || mkdir("/etc/xdg/autostart", 0755) != 0)
        return ("mount: " + qt_error_string()).toUtf8();
    return {};
}

// Split, convert, scan: what the table's fast functions have to agree with.
quint32 plainInteger(const QString &text)
{
    const QStringList parts = text.split('.');
    quint32 value = 0;
    for (int i = 0; i < 4 && parts.size() == 4; ++i)
        value |= static_cast<quint32>(parts.at(i).toInt()) << (24 - 8 * i);
    return value;
}

bool plainContains(quint32 address)
{
    const AddressBlocks::Range *first = AddressBlocks::ranges();
    return std::any_of(first, first + AddressBlocks::count(),
        [address](const auto &range) { return range.first < address && range.last > address; });
}

const QByteArray noPrivateHost = privateHost();

} // namespace

class TestOperatingHost : public QObject {
    Q_OBJECT

    Operating operating;
    std::unique_ptr<QTemporaryDir> dir;
    QByteArrayList opened;

public slots:
    void takeUrl(const QUrl &url) { opened.append(url.toEncoded()); }

private slots:
    void init()
    {
        dir = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(dir->path()) && QDir().mkdir("bin"));
        static const QByteArray path = qgetenv("PATH");
        qputenv("PATH", dir->filePath("bin").toUtf8() + ':' + path);
    }

    void entriesComeAndGoWithoutANetwork()
    {
        if (!noPrivateHost.isEmpty())
            return QTest::qSkip(noPrivateHost.constData(), __FILE__, __LINE__);
        QCOMPARE(operating.getMac(), QStringList());
        QVERIFY(!operating.checkAdapterIsExist("lo")); // it is down and has no address
        const QString menu = "/usr/share/applications/Vorn.desktop";
        const QString autostart = "/etc/xdg/autostart/Vorn.desktop";
        const QByteArray entry("[Desktop Entry]\nType=Application\nName=VORN\nGenericName=VORN\n"
                               "Terminal=false\nExec=/opt/VornVPN/VornRun.sh\nIcon=/opt/VornVPN/"
                               "small.ico\nCategories=Development;\n");
        DataManager::getInstance()->setInstallPath("/opt/VornVPN");
        QSignalSpy notWritten(&operating, &Operating::entryNotWritten);
        const mode_t before = umask(077);
        QVERIFY(operating.deleteLinkToDeskTopLinux() && operating.addLinkToDeskTopLinux());
        QCOMPARE(contentOf(menu), QByteArray(entry + "MimeType=x-scheme-handler/VORN;\n"));
        QCOMPARE(int(QFile::permissions(menu)) & 0x0777, 0x0777);
        QVERIFY(operating.addAutoStartUp() && operating.addAutoStartUp());
        QCOMPARE(contentOf(autostart), entry);
        QCOMPARE(int(QFile::permissions(autostart)) & 0x0777, 0x0755);
        umask(before);
        QVERIFY(operating.deleteLinkToDeskTopLinux() && operating.deleteAutoStartUp());
        QVERIFY(!QFile::exists(menu) && !QFile::exists(autostart));

        QVERIFY(putProgram("bin/chmod", "touch called\n"));
        for (const char *path : {"/usr/share/applications", "/etc/xdg"})
            QCOMPARE(mount("none", path, nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
        QVERIFY(notWritten.isEmpty());
        QVERIFY(!operating.addLinkToDeskTopLinux() && !operating.addAutoStartUp());
        QVERIFY(!QFile::exists("called"));
        QCOMPARE(notWritten,
            QList<QVariantList>({{"The menu entry could not be created."},
                {"The automatic start could not be set up."}}));
    }

    void startsDetached()
    {
        const QByteArray lines = "echo ${0##*/} \"$1\" >pipe\n";
        QVERIFY(!operating.doOtherExe("./Other", {}) && !operating.doUpdateExe());
        QVERIFY(putProgram("Other", lines) && putProgram("Update", lines));
        QVERIFY(put("VornInstall.run", "#!/bin/sh\n" + lines)); // downloads cannot be executed
        QCOMPARE(mkfifo("pipe", 0600), 0);
        QVERIFY(operating.doOtherExe("./Other", {"a  b"}) && contentOf("pipe") == "Other a  b\n");
        QVERIFY(operating.doUpdateExe() && contentOf("pipe") == "Update \n");
        QVERIFY(operating.doInstallExe() && contentOf("pipe") == "VornInstall.run \n");
    }

    void lackOfRoomIsTold()
    {
        if (!noPrivateHost.isEmpty())
            return QTest::qSkip(noPrivateHost.constData(), __FILE__, __LINE__);
        QVERIFY(QDir().mkdir("s") && QDir().mkdir("t") && put("s/a", "a"));
        QVERIFY(put("s/b", QByteArray(1'000'000, 'b')));
        QCOMPARE(mount("none", "t", "tmpfs", 0, "size=64k"), 0);
        const QSignalSpy ended(&operating, &Operating::sendSystemCmdResult);
        operating.copyDirectoryFilesThread(dir->filePath("s"), dir->filePath("t"), true);
        Operating::waitForCopies();
        const int isWhole = QFileInfo("t/a").size() == 1 && !QFile::exists("t/b");
        QCOMPARE(umount("t"), 0);
        QVERIFY(isWhole);
        QCOMPARE(ended[0].at(1).toString(),
            "“b” could not be written to “" + dir->filePath("t")
                + "”: no room on the disk. Not copied: 1 of 2 files.");
    }

    void onlyOurInstallerIsMadeRunnable()
    {
        if (!OtherUser::exists())
            QSKIP("only root can be somebody else");
        QVERIFY(put("private", "") && QFile::link("private", "VornInstall.run"));
        QCOMPARE(chmod("private", 0600), 0);
        QVERIFY(OtherUser::owns("VornInstall.run") && OtherUser::owns("."));
        operating.doInstallExe();
        QCOMPARE(int(QFile::permissions("private")) & 0x0777, 0x0600);
        QVERIFY(QFile::remove("VornInstall.run") && put("VornInstall.run", "#!/bin/sh\n"));
        QVERIFY(operating.doInstallExe());
        QCOMPARE(int(QFile::permissions("VornInstall.run")) & 0x0777, 0x0777);
    }

    void textsForTheShellStayTexts_data()
    {
        const Rows<QString> row;
        row("a quote", "a\"; touch planted; \"b$(touch planted)`touch planted`$HOME");
        row("a backslash before a quote", "a\\\"; touch planted; \"");
        row("backslashes", "a\\\\b\\$HOME\\\n");
    }

    void textsForTheShellStayTexts()
    {
        const QString path = Rows<QString>::fetch();
        QVERIFY(putProgram("bin/rd", "printf '%s|' \"$@\" >removed\n"));
        QVERIFY(operating.deleteDir(path));
        QCOMPARE(contentOf("removed"), "/s|/q|" + path.toUtf8() + '|');
        QVERIFY(!QFile::exists("planted"));
    }

    void namesThatAreNoneRunNothing_data()
    {
        const Rows<QString> row;
        row("nothing", "");
        row("a command", "VORN; touch planted");
        row("a line of its own", "VORN\ntouch planted");
    }

    void namesThatAreNoneRunNothing()
    {
        QVERIFY(putProgram("bin/ps", "touch planted\necho 'root 41 1 VORN planted -v * .'\n"));
        const QString name = Rows<QString>::fetch();
        QVERIFY(!operating.killProcess(name) && !operating.checkExeIsRun(name));
        QVERIFY(!QFile::exists("planted"));
    }

    void killsAndFindsByAnyPartOfTheLine()
    {
        QVERIFY(putProgram("bin/kill", "echo \"$@\" >killed\n"));
        QVERIFY(putProgram("bin/ps",
            "echo root 41 1 /a/sarko2linux -d\necho root 42 1 grep sarko2linux\n"
            "echo me 43 1 edit sarko2linux.txt\necho me 44 1 VORN-helper\n"));
        const QString program = operating.getCurrentPath() + "/sarko2linux";
        QVERIFY(put(program, "old") && put(program + "Temp", "new"));
        QVERIFY(operating.replaceProtocolProgram());
        QCOMPARE(contentOf("killed"), QByteArray("-9 41 43\n"));
        QCOMPARE(contentOf(program), QByteArray("new"));
        QVERIFY(!operating.replaceProtocolProgram() && !QFile::exists(program));
        QVERIFY(!operating.killProcess("VORN"));
        QCOMPARE(contentOf("killed"), QByteArray("-9 44\n"));
        QVERIFY(operating.checkExeIsRun("VORN") && !operating.checkExeIsRun("vorn"));
    }

    void opensSignInPages()
    {
        Deployment &deployment = Deployment::current();
        deployment.webSignInHost = "https://web.test.example:8443";
        deployment.oauthClientId = "a&b+c";
        deployment.chatGroupLink = "https://chat.example/g";
        QDesktopServices::setUrlHandler("https", this, "takeUrl");
        operating.googleLogin();
        operating.facebookLogin();
        operating.joinTelegramGroup();
        QDesktopServices::unsetUrlHandler("https");
        QCOMPARE(opened.join(' '),
            QByteArray("https://accounts.google.com/o/oauth2/v2/auth/oauthchooseaccount"
                       "?response_type=code&scope=email%20openid%20profile&state=authorized"
                       "&access_type=offline&client_id=a%26b%2Bc"
                       "&redirect_uri=https%3A%2F%2Fweb.test.example%3A8443%2Fgooglelogin "
                       "https://web.test.example:8443/fblogin https://chat.example/g"));
    }

    void tableIsTheAllocationListAndItsSearchAgreesWithAScan()
    {
        using AddressBlocks::Range;
        const Range *ranges = AddressBlocks::ranges();
        const std::vector<Range> table(ranges, ranges + AddressBlocks::count());
        QCOMPARE(table.size(), std::size_t(3197));
        QVERIFY(std::all_of(table.begin(), table.end(), [](Range r) { return r.first <= r.last; }));
        QVERIFY(std::is_sorted(table.begin(), table.end(),
            [](Range left, Range right) { return left.last < right.first; }));
        QCOMPARE(table[0].last, plainInteger("1.0.3.255"));
        QCOMPARE(table[1].first, plainInteger("1.0.8.0"));
        QCOMPARE(table.back().last, plainInteger("223.255.253.255"));
        QRandomGenerator random(20160606);
        for (const auto [first, last] : table)
            for (const quint32 address : {0U, UINT_MAX, random.generate(), first - 1, first,
                     first + 1, last - 1, last, last + 1})
                if (AddressBlocks::contains(address) != plainContains(address))
                    QFAIL(qPrintable(QString::number(address)));
    }

    void dottedTextIsReadLeniently()
    {
        for (const char *text :
            {"1.0.1.1", "1.0.3.255", "", "1.0.1", "1.0.1.1.1", "...", ".0.1.1", "1.0.1.1x",
                "1..1.1", "01.000.000000000000001.1", "+1.0.1.1", " 1.0.1.1\n", "1.0.1.257",
                "0.256.256.1", "4294967297.0.1.1", "999999999.1.2.3", "2147483647.1.2.3",
                "-1.0.1.1", "1.0.-2147483648.1", "1.0.0x1.1", "1.0.1 1.1", "1e0.0.1.1"}) {
            QVERIFY2(operating.IPV4StringToInteger(text) == plainInteger(text), text);
            QVERIFY2(operating.EnableIPInBackCh(text) != plainContains(plainInteger(text)), text);
        }
        QVERIFY(operating.EnableIPInBackCh("1.0.1.0") && !operating.EnableIPInBackCh("1.0.1.1"));
    }

    void readsFilesBytesAndLoad()
    {
        CPUPACKED first{};
        QCOMPARE(get_cpuoccupy(&first), 0);
        QCOMPARE(first.name, "cpu");
        first = {"cpu", UINT_MAX, 0, 5, 7, 0, 0, 0};
        const CPUPACKED second{"cpu", 1, 1, 6, 9, 1, 1, 2};
        QCOMPARE(cal_cpuoccupy(&first, &second), 0.4);
        QElapsedTimer begun;
        begun.start();
        QCOMPARE(operating.getCurrentSystemCpuRate() + operating.getCurrentSystemMemoryInfo(), 0.0);
        QVERIFY(begun.hasExpired(999)); // the load is that of a second
        QVERIFY(put("abc", "abc") && put("empty", ""));
        QCOMPARE(operating.getFileMd5("abc"), "900150983cd24fb0d6963f7d28e17f72");
        QCOMPARE(operating.getFileMd5("empty"), "d41d8cd98f00b204e9800998ecf8427e");
        QCOMPARE(operating.getFileMd5("bin") + operating.getFileMd5("none"), QString());
        QCOMPARE(operating.getCorrectUnicode("\xe4\xb8\xad\xe6\x96\x87"), "中文");
        QCOMPARE(operating.getCorrectUnicode("a\xd6\xd0\xce\xc4"), "a中文");
    }
};

QTEST_MAIN(TestOperatingHost)
#include "tst_operating_host.moc"
