#include "api/KQHttpManager.h"

void KQHttpManager::getAllLineInfo() { }
void KQHttpManager::getLineInfo(QString) { }
QList<QObject *> KQHttpManager::getLineInfoModelList() { return {}; }
void KQHttpManager::dealLineInfo(QJsonObject &) { }
