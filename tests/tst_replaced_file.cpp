#include "OtherUser.h"
#include "Support.h"
#include "base/Directory.h"
#include "settings/JsonFile.h"
#include "settings/ReplacedFile.h"

#include <atomic>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

// What lies at the name of the file, and what becomes of it when root writes.
struct InTheWay {
    std::function<bool()> put;
    bool isRead;
    bool isWritten;
    QByteArray victim; // the content of the file that the name may lead to
    uint owner;
};

// A file beside the one that is written.
struct Neighbour {
    QString name;
    bool isInUse;
    bool stays;
};

constexpr uint root = 0;

} // namespace

class TestReplacedFile : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory;
    uint openFiles = 0;

private slots:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(directory->path()));
        openFiles = QDir("/proc/self/fd").count();
    }

    void cleanup() { QCOMPARE(QDir("/proc/self/fd").count(), openFiles); }

    void rootTouchesNothingOfOthers_data()
    {
        const auto theirs = [](const char *name) { return OtherUser::owns(name); };
        const Rows<InTheWay> row;
        row("their link",
            {[=] { return QFile::link("victim", "file") && theirs("file"); }, false, true, "whole",
                root});
        row("root's own link",
            {[] { return QFile::link("victim", "file"); }, true, true, "new", root});
        row("their file in a directory of root's",
            {[=] { return put("file", "old") && theirs("file"); }, true, true, "whole", root});
        row("their file in a directory of theirs",
            {[=] { return put("file", "old") && theirs("file") && theirs("."); }, true, true,
                "whole", OtherUser::id});
        row("their pipe",
            {[=] { return mkfifo("file", 0666) == 0 && theirs("file"); }, false, false, "whole",
                OtherUser::id});
    }

    void rootTouchesNothingOfOthers()
    {
        if (!OtherUser::exists())
            QSKIP("only root meets others");
        const auto [putInTheWay, isRead, isWritten, victim, owner] = Rows<InTheWay>::fetch();
        QVERIFY(put("victim", "whole") && putInTheWay());
        QCOMPARE(JsonFile::read("file").has_value(), isRead);
        QCOMPARE(ReplacedFile::write("file", "new", 0600), isWritten);
        QCOMPARE(contentOf("victim"), victim);
        QCOMPARE(QFileInfo("file").ownerId(), owner);
        if (isWritten)
            QCOMPARE(contentOf("file"), QByteArray("new"));
    }

    void pathBehindALinkIsLookedAtAllTheWay()
    {
        if (!OtherUser::exists())
            QSKIP("only root meets others");
        QVERIFY(QDir().mkpath("his/ours") && OtherUser::owns("his"));
        QVERIFY(QFile::link("his/ours", "link"));
        const Directory around = Directory::open(directory->path());
        const Directory behind = around.subdirectory("link");
        QVERIFY(behind.pathBelow(around.path()).startsWith("/proc/self/fd/"));
    }

    // Opening a pipe that nobody writes into would take for ever.
    void whatIsLookedAtIsWhatIsRead()
    {
        QVERIFY(put("file", "{}") && mkfifo("pipe", 0600) == 0);
        std::atomic_bool isOver = false;
        std::thread exchanger([&isOver] {
            while (!isOver)
                renameat2(AT_FDCWD, "file", AT_FDCWD, "pipe", RENAME_EXCHANGE);
        });
        for (int i = 0; i < 2000; ++i)
            JsonFile::read("file");
        isOver = true;
        exchanger.join();
    }

    void filesOfKilledWritersAreSwept_data()
    {
        const Rows<Neighbour> row;
        row("of a killed writer", {"file.AbCdEf", false, false});
        row("of one that runs", {"file.AbCdEf", true, true});
        row("of another name", {"file2.AbCdEf", false, true});
        row("the user's copy", {"file.backup1", false, true});
    }

    void filesOfKilledWritersAreSwept()
    {
        const auto [name, isInUse, stays] = Rows<Neighbour>::fetch();
        QVERIFY(put(name, "password"));
        QFile writer(name);
        QVERIFY(writer.open(QIODevice::ReadOnly));
        QVERIFY(!isInUse || flock(writer.handle(), LOCK_EX | LOCK_NB) == 0);
        QVERIFY(ReplacedFile::write("file", "new", 0600));
        QCOMPARE(QFileInfo::exists(name), stays);
    }

    void aFullDiskLeavesTheOldContent_data()
    {
        const Rows<bool> row;
        row("beside the file", {false});
        row("in the file, where the directory takes no other", {true});
    }

    void aFullDiskLeavesTheOldContent()
    {
        const bool isDirectoryClosed = Rows<bool>::fetch();
        const QByteArray before(200, 'o');
        QVERIFY(put("file", before));
        std::unique_ptr<OtherUser::Rights> rights; // root may write everywhere
        if (isDirectoryClosed) {
            if (!OtherUser::exists())
                QSKIP("needs another user");
            QVERIFY(
                OtherUser::owns("file") && QFile::setPermissions(".", QFile::Permissions(0x7755)));
            rights = std::make_unique<OtherUser::Rights>();
        }
        rlimit usual{}; // a limit on the size of files cuts a writing as a full disk does
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
        const rlimit full{250, usual.rlim_max};
        QVERIFY(std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && setrlimit(RLIMIT_FSIZE, &full) == 0);
        const bool isWritten = ReplacedFile::write("file", QByteArray(300, 'n'), 0600);
        setrlimit(RLIMIT_FSIZE, &usual);
        QVERIFY(!isWritten);
        QCOMPARE(contentOf("file"), before);
        QCOMPARE(QDir().entryList(QDir::Files | QDir::Hidden), QStringList("file"));
    }

    void whatIsTooLongIsNoJson()
    {
        const auto isRead = [](qint64 size) {
            return put("file", "{\"a\":1}") && QFile::resize("file", size) // with zero bytes
                && JsonFile::read("file").value().isObject();
        };
        constexpr int longest = 16 * 1024 * 1024;
        QVERIFY(isRead(longest));
        QVERIFY(!isRead(longest + 1));
        QVERIFY(!isRead(qint64(1) << 40)); // more than there is memory for
    }
};

QTEST_GUILESS_MAIN(TestReplacedFile)
#include "tst_replaced_file.moc"
