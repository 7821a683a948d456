#include "installer/Operating.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QLibraryInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>
#include <memory>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

// A tree to copy, in the temporary directory (TMPDIR chooses the file system).
class Tree {
public:
    static Tree &small()
    {
        static Tree tree([](const QString &root) { writeFiles(root, 5000, 4 * 1024); });
        return tree;
    }

    static Tree &large()
    {
        static Tree tree([](const QString &root) { writeFiles(root, 200, 1024 * 1024); });
        return tree;
    }

    static Tree &qt()
    {
        static Tree tree(copyInstalledQt);
        return tree;
    }

    QString from() const { return m_directory->filePath(QStringLiteral("from")); }
    QString to() const { return m_directory->filePath(QStringLiteral("to")); }
    const QStringList &files() const { return m_files; } // relative to from()
    const QStringList &directories() const { return m_directories; } // parents first

    // Leaves the disk idle: what earlier copies have written is on it.
    void removeTarget() const
    {
        QDir(to()).removeRecursively();
        const int handle = open(QFile::encodeName(from()).constData(), O_RDONLY);
        syncfs(handle);
        close(handle);
    }

private:
    explicit Tree(const std::function<void(const QString &)> &fill)
        : m_directory(std::make_unique<QTemporaryDir>())
    {
        QDir().mkpath(from());
        fill(from());
        const QDir root(from());
        QDirIterator entries(
            from(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = root.relativeFilePath(entries.next());
            (entries.fileInfo().isDir() ? m_directories : m_files).append(path);
        }
        m_directories.sort();
    }

    // A hundred a directory.
    static void writeFiles(const QString &root, int count, int size)
    {
        const QByteArray content(size, 'v');
        for (int i = 0; i < count; ++i) {
            const QString directory = root + QStringLiteral("/d%1").arg(i / 100);
            QDir().mkpath(directory);
            QFile file(directory + QStringLiteral("/f%1").arg(i));
            if (!file.open(QIODevice::WriteOnly) || file.write(content) != size) {
                qFatal("%s", qPrintable(file.errorString()));
            }
        }
    }

    // Libraries, plug-ins and QML modules, over and over until there are 300 MB.
    static void copyInstalledQt(const QString &root)
    {
        qint64 bytes = 0;
        const QString libraries = QLibraryInfo::location(QLibraryInfo::LibrariesPath);
        for (int round = 0; bytes < 300'000'000; ++round) {
            const QDir target(root + QStringLiteral("/qt%1").arg(round));
            const QDir source(libraries);
            QDirIterator libs(libraries, {QStringLiteral("libQt5*.so.5")}, QDir::Files);
            QDirIterator tree(
                source.filePath(QStringLiteral("qt5")), QDir::Files, QDirIterator::Subdirectories);
            for (QDirIterator *files : {&libs, &tree}) {
                while (files->hasNext() && bytes < 300'000'000) {
                    const QString from = files->next();
                    const QString to = target.filePath(source.relativeFilePath(from));
                    QDir().mkpath(QFileInfo(to).path());
                    QFile::copy(from, to);
                    bytes += QFileInfo(to).size();
                }
            }
        }
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QStringList m_files;
    QStringList m_directories;
};

bool copyByInstaller(const Tree &tree)
{
    Operating operating;
    return operating.copyDirectoryFiles(tree.from(), tree.to(), true);
}

bool copyBarely(const Tree &tree)
{
    QDir target(tree.to());
    bool copied = target.mkpath(QStringLiteral("."));
    for (const QString &directory : tree.directories()) {
        copied = target.mkdir(directory) && copied;
    }
    const QString from = tree.from() + QLatin1Char('/');
    const QString to = tree.to() + QLatin1Char('/');
    for (const QString &file : tree.files()) {
        copied = QFile::copy(from + file, to + file) && copied;
    }
    return copied;
}

bool copyByCp(const Tree &tree)
{
    return QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-r"), tree.from(), tree.to()})
        == 0;
}

void measure(benchmark::State &state, Tree &(*make)(), bool (*copy)(const Tree &))
{
    const Tree &tree = make();
    for (auto _ : state) {
        tree.removeTarget();
        QElapsedTimer timer;
        timer.start();
        if (!copy(tree)) {
            state.SkipWithError("the copy failed");
        }
        state.SetIterationTime(static_cast<double>(timer.nsecsElapsed()) / 1e9);
    }
}

// One copy a repetition, so that the three ways take turns.
void registerCopy(const char *name, Tree &(*make)(), bool (*copy)(const Tree &))
{
    benchmark::RegisterBenchmark(
        name, [make, copy](benchmark::State &state) { measure(state, make, copy); })
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const bool registered = [] {
    const struct {
        const char *name;
        Tree &(*make)();
        bool (*copy)(const Tree &);
    } copies[] = {
        {"copy_small", Tree::small, copyByInstaller},
        {"copy_small_bare", Tree::small, copyBarely},
        {"copy_small_cp", Tree::small, copyByCp},
        {"copy_large", Tree::large, copyByInstaller},
        {"copy_large_bare", Tree::large, copyBarely},
        {"copy_large_cp", Tree::large, copyByCp},
        {"copy_qt", Tree::qt, copyByInstaller},
        {"copy_qt_bare", Tree::qt, copyBarely},
        {"copy_qt_cp", Tree::qt, copyByCp},
    };
    for (const auto &[name, make, copy] : copies) {
        registerCopy(name, make, copy);
    }
    return true;
}();

} // namespace
