#pragma once

#include <QString>

// What an installation into a path would meet, as far as it can be known without trying. May block
// for as long as the file system does.
struct PathOutlook {
    enum Finding {
        Nothing, // worth telling, or known
        NoDirectory, // something else has the name, or a part of it
        NoParent, // only the last directory of a path is made
        NeedsRights,
        NotWritable, // not even with the rights of root
        TooLittleRoom,
        WillBeUpdated, // an earlier installation
    };

    static PathOutlook of(const QString &path, const QString &bundle);
    // One short line in the language of the interface, or nothing.
    QString hint() const;

    Finding finding = Nothing;
    QString subject; // what is no directory, or is missing: relative where the path was
    QString leadsTo; // where a relative path leads; empty for others
    qint64 neededBytes = 0; // in addition to what an earlier installation takes
    qint64 freeBytes = 0;
    QString nearest; // directory of the path that exists; empty when nothing of a relative one does
};
