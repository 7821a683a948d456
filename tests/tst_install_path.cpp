#include "Manual.h"
#include "OtherUser.h"
#include "installer/Operating.h"
#include "installer/PathOutlook.h"

#include <condition_variable>
#include <mutex>

#include <dlfcn.h>
#include <string.h>
#include <sys/stat.h>

namespace {

// A file system that hangs: whoever looks at a path with this name waits until it is let go.
class Hanging {
public:
    static constexpr char name[] = "hanging";

    static void wait()
    {
        std::unique_lock<std::mutex> lock(mutex);
        ++waiting;
        changed.wait(lock, [] { return isLetGo; });
    }
    static void letGo()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isLetGo = true;
        changed.notify_all();
    }
    static int count()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return waiting;
    }

private:
    inline static std::mutex mutex;
    inline static std::condition_variable changed;
    inline static bool isLetGo = false;
    inline static int waiting = 0;
};

} // namespace

// In front of the C library's, for the whole program.
extern "C" int stat(const char *path, struct stat *status) noexcept
{
    using Function = int (*)(const char *, struct stat *);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "stat"));
    if (strstr(path, Hanging::name) != nullptr)
        Hanging::wait();
    return real(path, status);
}

class TestInstallPath : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir;
    QString root;

private slots:
    void init()
    {
        dir = std::make_unique<QTemporaryDir>();
        root = QFileInfo(dir->path()).canonicalFilePath();
        QVERIFY(QDir::setCurrent(root) && QDir().mkpath("bundle/lib") && QDir().mkpath("apps"));
        QVERIFY(put("bundle/VORN", QByteArray(5000, 'v')) && put("bundle/lib/l", "l"));
    }

    void hintsSayWhatWillHappen_data()
    {
        const Rows<QStringList> row;
        for (const QStringList &cells : tableBelow("## What the path panel says", "files.md"))
            row(qPrintable(cells[0].trimmed()), cells);
    }

    void hintsSayWhatWillHappen()
    {
        const QStringList cells = Rows<QStringList>::fetch();
        const auto said = [&](int column) {
            const QString text = codeIn(cells[column]).value(0).replace("ROOT", root);
            return QUrl::fromPercentEncoding(text.toUtf8());
        };
        QVERIFY(put("file", "") && QFile::link("none", "dangling"));
        QVERIFY(QFile::link("circle", "circle") && QDir().mkdir("earlier"));
        QVERIFY(put("earlier/manifest.txt", "VORN\n") && put("bundle/manifest.txt", "VORN\n"));
        const auto outlook = PathOutlook::of(said(1), root + "/bundle");
        QCOMPARE(outlook.hint(), said(2));
        QCOMPARE(outlook.nearest, said(3));
    }

    void longPathsAreShortened()
    {
        const QString hint = PathOutlook::of(QString(200, 'x') + "/END", root + "/bundle").hint();
        QVERIFY2(
            hint.contains("…") && hint.contains("/END”") && hint.size() < 300, qPrintable(hint));
        const QString tooLong = root + '/' + QString(4000, 'x');
        QCOMPARE(PathOutlook::of(tooLong, root + "/bundle").hint(), "");
    }

    void roomIsThatOfTheBundle()
    {
        QFile huge("bundle/lib/huge");
        QVERIFY(huge.open(QIODevice::WriteOnly) && huge.resize(qint64{15'000'000'000'000}));
        const auto outlook = PathOutlook::of(root + "/apps/VornVPN", root + "/bundle");
        QCOMPARE(outlook.neededBytes, qint64{15'000'000'000'000} + 8192 + 4096);
        QVERIFY2(QRegularExpression("^Too little room: 15000001 MB needed, \\d+ MB free\\.$")
                     .match(outlook.hint())
                     .hasMatch(),
            qPrintable(outlook.hint()));
        QVERIFY(QDir().mkpath("apps/VornVPN/lib")
            && QFile::link(root + "/bundle/lib/huge",
                "apps/VornVPN/lib/huge")); // is replaced
        QCOMPARE(PathOutlook::of(root + "/apps/VornVPN", root + "/bundle").neededBytes,
            qint64{8192 + 4096});
    }

    void rightsAreThoseOfThisProcess()
    {
        if (!OtherUser::exists())
            QSKIP("only root can be somebody else");
        QCOMPARE(chmod(".", 0755) + chmod("apps", 0755) + chmod("bundle/lib", 0700), 0);
        QCOMPARE(PathOutlook::of(root + "/apps/VornVPN", root + "/bundle").hint(), "");
        // Where no room can be known none is missing.
        QCOMPARE(PathOutlook::of("/proc/VornVPN", root + "/bundle").hint(), "");
        const OtherUser::Rights rights;
        for (const char *path : {"/apps/VornVPN", "/apps", "/bundle/lib/VornVPN"})
            QCOMPARE(PathOutlook::of(root + path, root + "/bundle").hint(),
                "Needs administrator rights.");
        QCOMPARE(PathOutlook::of("/sys/VornVPN", root + "/bundle").hint(),
            "Needs administrator rights.");
    }

    void answersComeForTheNewestPathOnly()
    {
        Operating operating;
        QSignalSpy looked(&operating, &Operating::installPathLookedAt);
        for (int i = 0; i < 20; ++i)
            operating.lookAtInstallPath(root + QString("/none/%1/VornVPN").arg(i));
        operating.lookAtInstallPath(root + "/apps/VornVPN");
        QVERIFY(looked.isEmpty() && looked.wait());
        QCOMPARE(looked[0].at(0), QVariant(root + "/apps/VornVPN"));
        QCOMPARE(looked[0].at(2), QVariant(QUrl::fromLocalFile(root + "/apps")));
        operating.lookAtInstallPath("none");
        QVERIFY(looked.wait() && looked.count() == 2);
        QCOMPARE(looked[1].at(1), QVariant("Leads to “" + root + "/none”."));
        QCOMPARE(looked[1].at(2), QVariant(QUrl::fromLocalFile(QDir::homePath())));
    }

    void homeIsThatOfTheUserWhoAsked()
    {
        if (!OtherUser::exists())
            QSKIP("only root can be asked by somebody else");
        qputenv("PKEXEC_UID", QByteArray::number(OtherUser::id));
        Operating operating;
        QSignalSpy looked(&operating, &Operating::installPathLookedAt);
        operating.lookAtInstallPath("");
        const bool isAnswered = looked.wait();
        qunsetenv("PKEXEC_UID");
        QVERIFY(isAnswered);
        QCOMPARE(looked[0], QVariantList({"", "", QUrl("file:///nonexistent")}));
    }

    void hangingFileSystemHoldsNothingUp()
    {
        Operating operating;
        QSignalSpy looked(&operating, &Operating::installPathLookedAt);
        for (int i = 0; i < 10; ++i)
            operating.lookAtInstallPath(root + "/hanging/" + QString::number(i));
        QVERIFY(looked.wait());
        QCOMPARE(looked[0].at(0).toString(), root + "/hanging/9");
        QCOMPARE(looked[0].at(1), QVariant(QString()));
        QVERIFY(Hanging::count() <= 4);
        operating.lookAtInstallPath(root + "/none/VornVPN");
        Hanging::letGo();
        QVERIFY(looked.wait());
        QCOMPARE(looked.count(), 2);
        QCOMPARE(looked[1].at(1).toString(), "“" + root + "/none” does not exist.");
    }
};

QTEST_MAIN(TestInstallPath)
#include "tst_install_path.moc"
