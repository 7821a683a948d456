#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

// Names are relative to the installation's directory, those of menu and autostart entries absolute.
struct RemovalReport {
    struct Failure {
        QString name;
        int error; // of errno; 0 where nobody can tell whose it is
    };
    QStringList kept; // of others, in the order of their names
    QVector<Failure> failed; // should have gone
};

// Takes an installation off the machine: its menu and autostart entries, the files that its
// "manifest.txt" and "manifest.old.txt" name, those that the installer and the client write beside
// them, then the directories that have become empty, the installation's own last. Everything else
// stays and is reported. A removal that was stopped at any point can be run again.
//
// A manifest has one path a line, relative to the directory, in UTF-8. A line that leads out of the
// directory, through a link too, is not followed and is reported as failed. Without a manifest, or
// with one that is too large, nobody can tell whose the files are: then only the entries and the
// launchers are removed, and the rest is reported as failed.
class Removal {
public:
    using Progress = std::function<void(int percentage)>;

    explicit Removal(
        const QString &directory, const QStringList &desktopEntries = installedEntries());

    // Tells each percentage once, below 100. Works on the calling thread; running it again does no
    // harm.
    RemovalReport run(const Progress &progress) const;

private:
    static QStringList installedEntries();

    QString m_directory;
    QStringList m_desktopEntries;
};
