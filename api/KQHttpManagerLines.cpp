#include "api/KQHttpManager.h"

#include "base/ReplyEnvelope.h"
#include "lines/LineInfoListModel.h"

void KQHttpManager::getAllLineInfo() { post(Request::AllLines); }

void KQHttpManager::getLineInfo(const QString &word)
{
    post(Request::SearchLines, {{"word", word}});
}

void KQHttpManager::dealLineInfo(QJsonObject &object)
{
    LineInfoListModel model;
    QString refusal;
    if (!model.createLineInfoModelListByCountry(object, refusal)) {
        emit lineInfoStatus(false, refusal);
        return;
    }
    // The scenes bind to the old records until they have taken the new ones.
    const QList<QObject *> replaced = m_catalogue.replace(model.getLineInfoModelList());
    emit lineInfoStatus(true, messageOf(object));
    for (QObject *record : replaced) {
        record->deleteLater();
    }
}

QList<QObject *> KQHttpManager::getLineInfoModelList() { return m_catalogue.areas(); }
