#include "api/KQHttpManager.h"

void KQHttpManager::userLogin(QString, QString) { }
void KQHttpManager::userVisitorLogin() { }
void KQHttpManager::userRegister(QString, QString, QString) { }
void KQHttpManager::userRegisterActive(QString, QString) { }
void KQHttpManager::findPasswd(QString, QString, QString) { }
void KQHttpManager::getEmailCode(QString, QString) { }
void KQHttpManager::thirdLogin(QString) { }
void KQHttpManager::getUserInfoAfterLogin() { }
void KQHttpManager::signOut() { }
void KQHttpManager::dealUserLoginInfo(QJsonObject &) { }
void KQHttpManager::dealUserVisitorLoginInfo(QJsonObject &) { }
void KQHttpManager::dealUserRegisterInfo(QJsonObject &) { }
void KQHttpManager::dealUserRegisterActiveInfo(QJsonObject &) { }
void KQHttpManager::dealFindPasswdInfo(QJsonObject &) { }
void KQHttpManager::dealEmailCodeInfo(QJsonObject &) { }
void KQHttpManager::dealUserInfo(QJsonObject &) { }
