#include "api/KQHttpManager.h"

void KQHttpManager::checkUpdate() { }
void KQHttpManager::checkIsNeedHotUpdate() { }
void KQHttpManager::downloadUpdateFile(QString) { }
void KQHttpManager::httpRequestFile(QString, int) { }
void KQHttpManager::dealUpdateInfo(QJsonObject &) { }
void KQHttpManager::dealHotUpdate(QJsonObject &) { }
void KQHttpManager::onDownloadProgress(qint64, qint64) { }
void KQHttpManager::onFinished() { }
