#include "api/KQHttpManager.h"

void KQHttpManager::feedBack(QString, QString, QString, QString, QString, QString, QString) { }
void KQHttpManager::getLineFeedBackQuestion() { }
void KQHttpManager::dealFeedBackInfo(QJsonObject &) { }
void KQHttpManager::dealLineFeedBackQuestion(QJsonObject &) { }
