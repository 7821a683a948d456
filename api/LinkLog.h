#pragma once

#include "api/LineLinkInfo.h"

#include <QList>
#include <QSet>
#include <QString>

#include <functional>
#include <optional>

// The attempts to connect that the server has not accepted yet. They are uploaded oldest first, one
// at a time; each operation that makes an upload due returns the record to send. An upload is known
// by the number of its record, so that an answer removes the record that it answers and no other.
class LinkLog {
public:
    using Clock = std::function<qint64()>; // seconds since the Unix epoch
    using Number = int; // of a queued record; stranger: of one that was never queued
    static constexpr Number stranger = 0;

    LinkLog();
    explicit LinkLog(Clock clock);

    // startOrEnd: "START" opens an attempt (again), "END" closes and queues the open one. Anything
    // else only sets the line.
    std::optional<LineLinkInfo> add(
        int serverId, const QString &status, const QString &startOrEnd, int vpnMode);

    Number uploadStarted(const LineLinkInfo &record);
    // The record stays queued, and nothing more is sent until a time-out or a late success: a
    // server that refuses one record would refuse them all.
    void uploadRefused(Number number);
    void uploadFailed(Number number);
    void uploadTimedOut(Number number);
    // Removes the record. The next one is returned; the last one ends the upload.
    std::optional<LineLinkInfo> uploadAccepted(Number number);
    // Neither accepted, refused nor failed yet.
    bool isOnWire(Number number) const { return m_onWire.contains(number); }

    std::optional<LineLinkInfo> head() const;
    // The number under which the head is or would be sent; stranger without a head.
    Number headNumber() const;
    int size() const { return linkLogQueue.size(); }
    const LineLinkInfo &current() const { return currentLink; }
    bool isUploading() const { return linkLogUploading; }

private:
    struct Entry {
        Number number = stranger;
        LineLinkInfo record;
    };
    // Unless it is on the wire already.
    std::optional<LineLinkInfo> headToSend() const;

    Clock m_clock;
    LineLinkInfo currentLink;
    QList<Entry> linkLogQueue;
    Number m_lastNumber = stranger;
    QSet<Number> m_onWire;
    bool linkLogUploading = false;
};
