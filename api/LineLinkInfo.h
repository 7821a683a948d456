#pragma once

#include <QString>

// One attempt to connect a line, as the link log reports it.
struct LineLinkInfo {
    int srvid = 0; // the line
    QString status; // the outcome, as the caller words it
    QString spare; // not filled and not sent
    qint64 start_time = 0; // seconds since the Unix epoch; 0: no attempt is open
    qint64 end_time = 0; // seconds since the Unix epoch; 0: not ended
    QString protocol;

    bool operator==(const LineLinkInfo &other) const
    {
        return srvid == other.srvid && status == other.status && start_time == other.start_time
            && end_time == other.end_time && protocol == other.protocol;
    }
};
