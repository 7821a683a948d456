#pragma once

#include "api/LineLinkInfo.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

// The attempts to connect that the server has not accepted yet. They are uploaded oldest first, one
// at a time; each operation that makes an upload due returns the record to send.
class LinkLog {
public:
    using Clock = std::function<qint64()>; // seconds since the Unix epoch

    LinkLog();
    explicit LinkLog(Clock clock);

    // startOrEnd: "START" opens an attempt (again), "END" closes and queues the open one. Anything
    // else only sets the line.
    std::optional<LineLinkInfo> add(
        int serverId, const QString &status, const QString &startOrEnd, int vpnMode);

    void uploadStarted() { linkLogUploading = true; }
    // The record stays queued, and nothing more is sent until a time-out or a late success: a
    // server that refuses one record would refuse them all.
    void uploadRefused() { linkLogUploading = true; }
    void uploadFailed() { linkLogUploading = false; }
    // Removes the head. The next record is returned; the last one ends the upload.
    std::optional<LineLinkInfo> uploadAccepted();

    std::optional<LineLinkInfo> head() const;
    int size() const { return linkLogQueue.size(); }
    const LineLinkInfo &current() const { return currentLink; }
    bool isUploading() const { return linkLogUploading; }

private:
    Clock m_clock;
    LineLinkInfo currentLink;
    QList<LineLinkInfo> linkLogQueue;
    bool linkLogUploading = false;
};
