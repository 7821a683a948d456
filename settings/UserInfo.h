#pragma once

#include <QString>

// The session record. An empty session means: not logged in.
class UserInfo {
public:
    QString getRadiusUserName() const { return m_radiusUserName; }
    void setRadiusUserName(const QString &value) { m_radiusUserName = value; }
    QString getRadiusPasswd() const { return m_radiusPasswd; }
    void setRadiusPasswd(const QString &value) { m_radiusPasswd = value; }
    QString getSession() const { return m_session; }
    void setSession(const QString &value) { m_session = value; }
    QString getRd() const { return m_rd; }
    void setRd(const QString &value) { m_rd = value; }
    int getUid() const { return m_uid; }
    void setUid(int value) { m_uid = value; }

private:
    QString m_radiusUserName; // the tunnel's account, not the user's
    QString m_radiusPasswd;
    QString m_session;
    QString m_rd;
    int m_uid = 0;
};
