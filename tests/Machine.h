#pragma once

#include "Support.h"
#include "uninstaller/Removal.h"

// A machine with an installation and its entries, beside files that nobody may touch.
struct Machine {
    QTemporaryDir root;
    const QString top = QFileInfo(root.path()).canonicalFilePath() + '/';
    const QString directory = top + "opt/VornVPN/";
    const QStringList entries{top + "menu/Vorn.desktop", top + "autostart/Vorn.desktop"};

    static QByteArray entryFor(const QString &directory)
    {
        return "[Desktop Entry]\nExec=" + directory.toUtf8() + "/VornRun.sh\nIcon=x\n";
    }

    // A file of the installation, "a/" a directory, "a -> b" a link to what lies beside it.
    bool add(const QString &file, const QByteArray &content = "x") const
    {
        const QStringList link = file.split(" -> ");
        const QString path = directory + link.first();
        return QDir().mkpath(path.left(path.lastIndexOf('/')))
            && (link.size() > 1 ? QFile::link(top + link.last(), path)
                                : path.endsWith('/') || put(path, content));
    }

    // The bundle with these lines more in its manifest, and files that are in none.
    bool install(const QByteArray &lines = {}, const QStringList &more = {}) const
    {
        const QStringList bundle{"VORN", "data/a", "VornInstall", "start.sh", "qml/Q/x.qml",
            "plugins/p.so", "lib/libA.so.1", "qt.conf", "Uninstall", "manifest.txt"};
        const QStringList written{"VornRun.sh", "UninstallRun.sh", "VornData.json",
            "CommonUsedLine.json", "../../other/neighbour", "../../menu/", "../../autostart/"};
        bool isDone = true;
        for (const QString &file : bundle + written + more)
            isDone = isDone && add(file);
        return isDone && add("manifest.txt", bundle.join('\n').toUtf8() + '\n' + lines)
            && put(entries.first(), entryFor(directory))
            && put(entries.last(), entryFor(directory));
    }

    RemovalReport remove(const Removal::Progress &progress = [](int) {}) const
    {
        return Removal(directory, entries).run(progress);
    }
    bool has(const QString &name) const { return QFileInfo::exists(top + name); }
};

inline QStringList namesOf(const QVector<RemovalReport::Failure> &failed)
{
    QStringList names;
    for (const auto &failure : failed)
        names << failure.name;
    return names;
}
