#include "api/KQHttpManager.h"

#include "base/DebugLine.h"
#include "base/ReplyEnvelope.h"
#include "settings/DataManager.h"

namespace {

constexpr int sessionExpired = 2000;
constexpr int noErrorPosition = -1;

using AccountStatus = void (KQHttpManager::*)(bool status, QString message, int errorPostion);

// The position of the input field at fault is a number written as text.
void report(KQHttpManager *manager, AccountStatus status, const QJsonObject &reply)
{
    emit(manager->*status)(succeeded(reply), messageOf(reply),
        succeeded(reply) ? noErrorPosition : textOf(dataOf(reply), "error_position").toInt());
}

} // namespace

void KQHttpManager::userLogin(const QString &email, const QString &password)
{
    if (!m_dataManager->getUserInfo().getSession().isEmpty()) {
        debugLine() << "session存在，直接是登录状态";
        emit loginStatus(true, QStringLiteral("login success"), noErrorPosition);
        return;
    }
    post(Request::Login, {{"email", email}, {"password", password}});
}

void KQHttpManager::dealUserLoginInfo(QJsonObject &object)
{
    if (codeOf(object) == sessionExpired) {
        debugLine() << "session 过期";
        signOut();
        if (m_dataManager->getIsVisitorLogin()) {
            m_dataManager->setIsVisitorLogin(false);
        } else {
            userLogin(m_dataManager->getUserName(), m_dataManager->getUserPassword());
        }
        return;
    }
    if (succeeded(object)) {
        storeSession(textOf(dataOf(object), "session"));
        m_dataManager->setIsVisitorLogin(false);
    }
    report(this, &KQHttpManager::loginStatus, object);
}

void KQHttpManager::userVisitorLogin()
{
    if (!m_dataManager->getUserInfo().getSession().isEmpty()) {
        debugLine() << "游客登录session存在，直接是登录状态------->";
        emit visitorLoginStatus(true, QStringLiteral("login success"), noErrorPosition);
        m_dataManager->setIsVisitorLoginStatus(true);
        return;
    }
    post(Request::VisitorLogin);
}

void KQHttpManager::dealUserVisitorLoginInfo(QJsonObject &object)
{
    debugLine() << "dealUserVisitorLoginInfo:" << object;
    if (codeOf(object) == sessionExpired) {
        debugLine() << "游客session 过期";
        signOut();
        m_dataManager->setIsVisitorLogin(false);
        return;
    }
    if (succeeded(object)) {
        storeSession(textOf(dataOf(object), "session"));
    }
    report(this, &KQHttpManager::visitorLoginStatus, object);
    if (succeeded(object)) {
        m_dataManager->setIsVisitorLoginStatus(true);
    }
}

void KQHttpManager::userRegister(const QString &email, const QString &password, const QString &code)
{
    post(Request::Register, {{"code", code}, {"email", email}, {"password", password}});
}

void KQHttpManager::dealUserRegisterInfo(QJsonObject &object)
{
    debugLine() << "dealUserRegisterInfo:" << object;
    report(this, &KQHttpManager::registerStatus, object);
}

void KQHttpManager::userRegisterActive(const QString &email, const QString &password)
{
    debugLine() << "注册激活";
    post(Request::RegisterActive, {{"email", email}, {"password", password}});
}

void KQHttpManager::dealUserRegisterActiveInfo(QJsonObject &object)
{
    debugLine() << "处理注册激活返回信息:" << object;
    report(this, &KQHttpManager::registerActiveStatus, object);
}

void KQHttpManager::findPasswd(const QString &email, const QString &password, const QString &code)
{
    post(Request::FindPassword, {{"code", code}, {"email", email}, {"password", password}});
}

void KQHttpManager::dealFindPasswdInfo(QJsonObject &object)
{
    report(this, &KQHttpManager::findPasswdStatus, object);
}

void KQHttpManager::getEmailCode(const QString &email, const QString &codeType)
{
    post(Request::EmailCode, {{"email", email}, {"code_type", codeType}});
}

void KQHttpManager::dealEmailCodeInfo(QJsonObject &object)
{
    report(this, &KQHttpManager::getEmailCodeStatus, object);
}

void KQHttpManager::thirdLogin(const QString &platform)
{
    debugLine() << "进行三方登录";
    Form form = {{"platform", platform}, {"email", m_dataManager->getUserName()},
        {"nickname", m_dataManager->getUserNickName()}};
    // One setting holds the identifier of whichever platform the user came from.
    if (platform == QLatin1String("google")) {
        form.append({"guid", m_dataManager->getUserGoogleId()});
    } else if (platform == QLatin1String("facebook")) {
        form.append({"fuid", m_dataManager->getUserGoogleId()});
    }
    form.append({"avatar", m_dataManager->getUserGooglePicture()});
    post(Request::ThirdLogin, form);
}

void KQHttpManager::getUserInfoAfterLogin() { post(Request::UserInfo); }

// Unlike the other replies, this one carries its message inside "data".
void KQHttpManager::dealUserInfo(QJsonObject &object)
{
    debugLine() << "dealUserInfo:" << object;
    const QJsonObject data = dataOf(object);
    if (succeeded(object)) {
        followStore();
        m_userInfo.setRadiusUserName(textOf(data, "username"));
        m_userInfo.setRadiusPasswd(textOf(data, "radius_pass"));
        m_userInfo.setUid(data.value(QLatin1String("uid")).toInt());
        m_userInfo.setRd(textOf(data, "rd"));
        m_dataManager->setUserName(textOf(data, "email"));
        const QJsonValue isVisitor = data.value(QLatin1String("is_visitor"));
        if (!isVisitor.isUndefined() && isVisitor.toInt() != 1) {
            debugLine() << "已经绑定用户信息不再是游客登录------------------>";
            m_dataManager->setIsLoginStatus(true);
            m_dataManager->setIsVisitorLoginStatus(false);
            m_dataManager->setIsVisitorLogin(false);
        }
        m_dataManager->setUserInfo(m_userInfo);
    } else if (codeOf(object) == sessionExpired) {
        debugLine() << "session 过期";
        signOut();
        if (!m_dataManager->getIsVisitorLogin()) {
            userLogin(m_dataManager->getUserName(), m_dataManager->getUserPassword());
            return;
        }
        m_dataManager->setIsVisitorLogin(false);
    } else {
        debugLine() << "dealUserInfo error:" << object;
    }
    emit userInfoStatus(succeeded(object), messageOf(data));
}

void KQHttpManager::signOut() { storeSession(QString()); }

void KQHttpManager::storeSession(const QString &session)
{
    followStore();
    m_userInfo.setSession(session);
    m_dataManager->setUserInfo(m_userInfo);
}

// Another manager or a settings file may have changed the store's record, and that one counts.
void KQHttpManager::followStore() { m_userInfo = m_dataManager->getUserInfo(); }
