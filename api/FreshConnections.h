#pragma once

#include <QObject>

class QHttpMultiPart;
class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;

// Sends requests past the system's proxies, asks for uncompressed replies, and uses connections
// that earlier requests have not used, so that a changed address or a new tunnel takes effect at
// once.
//
// QNetworkAccessManager::clearConnectionCache() closes the connections it keeps, but also silently
// kills every reply that still runs: such a reply neither finishes nor fails. So the cache is
// cleared only while nothing runs. Otherwise the access manager is retired: a new one takes over,
// and the old one is released when its last reply has finished.
//
// The replies belong to their access managers. Release a reply with deleteLater() when it has
// finished, or after abort(): one that is deleted while it runs never lets its manager go.
class FreshConnections : public QObject {
public:
    explicit FreshConnections(QObject *parent = nullptr);

    // Over a new connection. The form becomes a child of the reply.
    QNetworkReply *post(const QNetworkRequest &request, QHttpMultiPart *form);
    // Over a new connection, without credentials of earlier ones.
    QNetworkReply *getFresh(const QNetworkRequest &request);
    // Over any connection, used or not: mirrors and downloads.
    QNetworkReply *getShared(const QNetworkRequest &request);

private:
    void renew(void (QNetworkAccessManager::*clear)());
    QNetworkAccessManager *createManager();

    // Made for the first request: to make one takes a millisecond of the start.
    QNetworkAccessManager *m_current = nullptr;
};
