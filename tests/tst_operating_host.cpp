#include "base/Deployment.h"
#include "installer/AddressBlocks.h"
#include "installer/CpuSnapshot.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QApplication>
#include <QDesktopServices>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <climits>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

bool write(const QString &path, const QByteArray &text, bool executable = false)
{
    QFile file(path);
    const auto mode = QFile::ReadOwner | QFile::WriteOwner;
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size()
        && file.setPermissions(executable ? mode | QFile::ExeOwner : mode);
}

// Mounts and interfaces of its own for this process, before it has threads: empty directories in
// the place of those for entries. Returns why not.
QByteArray privateHost()
{
    const uid_t uid = geteuid();
    const gid_t gid = getegid();
    if (unshare(CLONE_NEWNS | CLONE_NEWNET | (uid == 0 ? 0 : CLONE_NEWUSER)) != 0) {
        return QByteArray("unshare: ") + std::strerror(errno);
    }
    if (uid != 0) {
        write("/proc/self/setgroups", "deny");
        write("/proc/self/uid_map", "0 " + QByteArray::number(uid) + " 1");
        write("/proc/self/gid_map", "0 " + QByteArray::number(gid) + " 1");
    }
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || mount("none", "/usr/share/applications", "tmpfs", 0, nullptr) != 0
        || mount("none", "/etc/xdg", "tmpfs", 0, nullptr) != 0
        || mkdir("/etc/xdg/autostart", 0755) != 0) {
        return QByteArray("mount: ") + std::strerror(errno);
    }
    return {};
}

// Split, convert, scan: what the table's fast functions have to agree with.
quint32 plainInteger(const QString &text)
{
    const QStringList parts = text.split('.');
    quint32 value = 0;
    for (int i = 0; i < 4 && parts.size() == 4; ++i) {
        value |= static_cast<quint32>(parts.at(i).toInt()) << (24 - 8 * i);
    }
    return value;
}

bool plainContains(quint32 address)
{
    const AddressBlocks::Range *end = AddressBlocks::ranges() + AddressBlocks::count();
    return std::any_of(AddressBlocks::ranges(), end,
        [address](const auto &range) { return range.first < address && range.last > address; });
}

QByteArray noPrivateHost;

} // namespace

class TestOperatingHost : public QObject {
    Q_OBJECT

public slots:
    void takeUrl(const QUrl &url) { opened.append(url.toEncoded()); }

private slots:
    void init();
    void entriesComeAndGoWithoutANetwork();
    void startsDetached();
    void killsByAnyPartOfTheLine();
    void findsWhatPsTells();
    void opensSignInPages();
    void tableIsTheAllocationList();
    void searchAgreesWithScan();
    void dottedText_data();
    void dottedText();
    void loadFiguresAreFixed();
    void readsFilesAndBytes();

private:
    Operating operating;
    std::unique_ptr<QTemporaryDir> dir;
    QByteArrayList opened;
};

void TestOperatingHost::init()
{
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(dir->path()));
    static const QByteArray path = qgetenv("PATH");
    QVERIFY(QDir().mkdir("bin"));
    qputenv("PATH", dir->filePath("bin").toUtf8() + ':' + path);
}

void TestOperatingHost::entriesComeAndGoWithoutANetwork()
{
    if (!noPrivateHost.isEmpty()) {
        QTest::qSkip(noPrivateHost.constData(), __FILE__, __LINE__);
        return;
    }
    QCOMPARE(operating.getMac(), QStringList());
    const QString menu = "/usr/share/applications/Vorn.desktop";
    const QString autostart = "/etc/xdg/autostart/Vorn.desktop";
    const QByteArray entry = "[Desktop Entry]\nType=Application\nName=VORN\nGenericName=VORN\n"
                             "Terminal=false\nExec=/opt/VornVPN/VornRun.sh\n"
                             "Icon=/opt/VornVPN/small.ico\nCategories=Development;\n";
    DataManager::getInstance()->setInstallPath("/opt/VornVPN");
    QVERIFY(operating.deleteLinkToDeskTopLinux());
    QVERIFY(operating.addLinkToDeskTopLinux());
    QCOMPARE(contents(menu), QByteArray(entry + "MimeType=x-scheme-handler/VORN;\n"));
    QCOMPARE(int(QFile::permissions(menu)) & 0x0777, 0x0777);
    QVERIFY(operating.addAutoStartUp());
    QVERIFY(operating.addAutoStartUp());
    QCOMPARE(contents(autostart), entry);
    QVERIFY(QFileInfo(autostart).isExecutable());
    QCOMPARE(QDir("/etc/xdg/autostart").entryList(QDir::Files).size(), 1);
    if (!QStandardPaths::findExecutable("desktop-file-validate").isEmpty()) {
        QCOMPARE(QProcess::execute("desktop-file-validate", {menu, autostart}), 0);
    }
    QVERIFY(operating.deleteLinkToDeskTopLinux());
    QVERIFY(operating.deleteAutoStartUp());
    QVERIFY(!QFile::exists(menu) && !QFile::exists(autostart));

    QVERIFY(write("bin/chmod", "#!/bin/sh\ntouch called\n", true));
    for (const char *path : {"/usr/share/applications", "/etc/xdg"}) {
        QCOMPARE(mount("none", path, nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    }
    QVERIFY(!operating.addLinkToDeskTopLinux());
    QVERIFY(!operating.addAutoStartUp());
    QVERIFY(!QFile::exists("called"));
}

void TestOperatingHost::startsDetached()
{
    const QByteArray script = "#!/bin/sh\necho ${0##*/} \"$1\" >pipe\n";
    QVERIFY(!operating.doOtherExe("./Other", {}) && !operating.doUpdateExe());
    QVERIFY(write("Other", script, true) && write("Update", script, true));
    QVERIFY(write("VornInstall.run", script)); // downloads cannot be executed
    QCOMPARE(mkfifo("pipe", 0600), 0);
    QVERIFY(operating.doOtherExe("./Other", {"a  b"}));
    QCOMPARE(contents("pipe"), QByteArray("Other a  b\n"));
    QVERIFY(operating.doUpdateExe());
    QCOMPARE(contents("pipe"), QByteArray("Update \n"));
    QVERIFY(operating.doInstallExe());
    QCOMPARE(contents("pipe"), QByteArray("VornInstall.run \n"));
}

void TestOperatingHost::killsByAnyPartOfTheLine()
{
    QVERIFY(write("bin/kill", "#!/bin/sh\necho \"$@\" >killed\n", true));
    QVERIFY(write("bin/ps",
        "#!/bin/sh\necho root 41 1 /a/sarko2linux -d\necho root 42 1 grep sarko2linux\n"
        "echo me 43 1 edit sarko2linux.txt\necho me 44 1 VORN\n",
        true));
    const QString program = operating.getCurrentPath() + "/sarko2linux";
    QVERIFY(write(program, "old") && write(program + "Temp", "new"));
    QVERIFY(operating.replaceProtocolProgram());
    QCOMPARE(contents("killed"), QByteArray("-9 41 43\n"));
    QCOMPARE(contents(program), QByteArray("new"));
    QVERIFY(!operating.replaceProtocolProgram());
    QVERIFY(!QFile::exists(program));
    QVERIFY(!operating.killProcess("VORN"));
    QCOMPARE(contents("killed"), QByteArray("-9 44\n"));
}

void TestOperatingHost::findsWhatPsTells()
{
    QVERIFY(write("bin/ps", "#!/bin/sh\necho 41 pts/0 VORN-helper\n", true));
    QVERIFY(operating.checkExeIsRun("VORN"));
    QVERIFY(!operating.checkExeIsRun("vorn"));
}

void TestOperatingHost::opensSignInPages()
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
    QCOMPARE(opened,
        QByteArrayList({"https://accounts.google.com/o/oauth2/v2/auth/oauthchooseaccount"
                        "?response_type=code&scope=email%20openid%20profile&state=authorized"
                        "&access_type=offline&client_id=a%26b%2Bc"
                        "&redirect_uri=https%3A%2F%2Fweb.test.example%3A8443%2Fgooglelogin",
            "https://web.test.example:8443/fblogin", "https://chat.example/g"}));
}

void TestOperatingHost::tableIsTheAllocationList()
{
    using AddressBlocks::Range;
    const std::vector<Range> table(
        AddressBlocks::ranges(), AddressBlocks::ranges() + AddressBlocks::count());
    QCOMPARE(table.size(), std::size_t(3197));
    QVERIFY(std::all_of(table.begin(), table.end(), [](Range r) { return r.first <= r.last; }));
    QVERIFY(std::is_sorted(table.begin(), table.end(),
        [](Range left, Range right) { return left.last < right.first; }));
    QCOMPARE(table.at(0).last, plainInteger("1.0.3.255"));
    QCOMPARE(table.at(1).first, plainInteger("1.0.8.0"));
    QCOMPARE(table.back().first, plainInteger("223.255.252.0"));
    QCOMPARE(table.back().last, plainInteger("223.255.253.255"));
    QVERIFY(operating.EnableIPInBackCh("1.0.1.0") && operating.EnableIPInBackCh("1.0.3.255"));
    QVERIFY(!operating.EnableIPInBackCh("1.0.1.1"));
}

void TestOperatingHost::searchAgreesWithScan()
{
    std::vector<quint32> addresses{0, 1, UINT_MAX};
    for (std::size_t i = 0; i < AddressBlocks::count(); ++i) {
        const AddressBlocks::Range range = AddressBlocks::ranges()[i];
        for (const quint32 border : {range.first, range.last}) {
            addresses.insert(addresses.end(), {border - 1, border, border + 1});
        }
    }
    QRandomGenerator random(20160606);
    std::generate_n(std::back_inserter(addresses), 3000, [&] { return random.generate(); });
    for (const quint32 address : addresses) {
        if (AddressBlocks::contains(address) != plainContains(address)) {
            QFAIL(qPrintable(QString("differs at %1").arg(address)));
        }
    }
}

void TestOperatingHost::dottedText_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"", "1.0.1", "1.0.1.1.1", "...", ".0.1.1", "1.0.1.1x", "1..1.1",
             "01.000.000000000000001.1", "+1.0.1.1", " 1.0.1.1\n", "1.0.1.257", "0.256.256.1",
             "4294967297.0.1.1", "999999999.1.2.3", "2147483647.1.2.3", "-1.0.1.1",
             "1.0.-2147483648.1", "1.0.0x1.1", "1.0.1 1.1", "1e0.0.1.1"}) {
        QTest::newRow(text) << text;
    }
}

void TestOperatingHost::dottedText()
{
    QFETCH(QString, text);
    QCOMPARE(operating.IPV4StringToInteger(text), plainInteger(text));
    QCOMPARE(operating.EnableIPInBackCh(text), !plainContains(plainInteger(text)));
}

void TestOperatingHost::loadFiguresAreFixed()
{
    QCOMPARE(operating.getCurrentSystemMemoryInfo(), 0.0);
    QCOMPARE(operating.getCurrentSystemCpuRate(), 0.0);
    CPUPACKED first{};
    QCOMPARE(get_cpuoccupy(&first), 0);
    QCOMPARE(first.name, "cpu");
    first = {"cpu", UINT_MAX, 0, 5, 7, 0, 0, 0};
    const CPUPACKED second{"cpu", 1, 1, 6, 9, 1, 1, 2};
    QCOMPARE(cal_cpuoccupy(&first, &second), 0.4);
}

void TestOperatingHost::readsFilesAndBytes()
{
    QVERIFY(write("abc", "abc") && write("empty", ""));
    QCOMPARE(operating.getFileMd5("abc"), QString("900150983cd24fb0d6963f7d28e17f72"));
    QCOMPARE(operating.getFileMd5("empty"), QString("d41d8cd98f00b204e9800998ecf8427e"));
    QCOMPARE(operating.getFileMd5("bin"), QString());
    QCOMPARE(operating.getFileMd5("none"), QString());
    QCOMPARE(operating.getCorrectUnicode("\xe4\xb8\xad\xe6\x96\x87"), QString("中文"));
    QCOMPARE(operating.getCorrectUnicode("a\xd6\xd0\xce\xc4"), QString("a中文"));
}

int main(int argc, char *argv[])
{
    noPrivateHost = privateHost();
    const QApplication application(argc, argv);
    TestOperatingHost test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_operating_host.moc"
