#pragma once

#include <QBuffer>
#include <QNetworkReply>
#include <QUrl>

// A reply from an address, with a body that has arrived.
class ReplyFrom : public QNetworkReply {
public:
    explicit ReplyFrom(const QUrl &url, const QByteArray &body = QByteArray())
    {
        setUrl(url);
        m_body.setData(body);
        m_body.open(QIODevice::ReadOnly);
        open(QIODevice::ReadOnly);
    }
    void abort() override { }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override
    {
        return m_body.bytesAvailable() + QNetworkReply::bytesAvailable();
    }

protected:
    qint64 readData(char *data, qint64 size) override { return m_body.read(data, size); }

private:
    QBuffer m_body;
};
