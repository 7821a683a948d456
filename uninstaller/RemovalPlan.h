#pragma once

#include <QByteArrayList>

class DirectoryTree;

// What goes, in the order in which it goes. Whoever was stopped half way can go on: first what only
// the client needs, then the installer, then what the uninstaller loads; and, when the directories
// are gone too, the uninstaller with its launcher and the lists that tell what is ours.
struct RemovalPlan {
    // Without a manifest it holds the launchers only.
    static RemovalPlan of(const DirectoryTree &tree);

    QByteArrayList first;
    QByteArrayList last;
    // Why they cannot be read, as errno has it. That there is no previous one is no error.
    int manifestError = 0;
    int previousManifestError = 0;
};
