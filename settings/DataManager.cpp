#include "settings/DataManager.h"

#include "base/DebugLine.h"
#include "base/Deployment.h"
#include "base/ExecutableDirectory.h"
#include "settings/LineFeedbackQuestionForQml.h"

#include <QGuiApplication>
#include <QHash>
#include <QQmlEngine>
#include <QScreen>

DataManager *DataManager::getInstance()
{
    static auto *const instance = new DataManager;
    return instance;
}

DataManager::DataManager()
    : domainName(Deployment::current().apiBaseAddress)
{
    qRegisterMetaType<UpdateInfo>();
    const QString directory = executableDirectory() + QLatin1Char('/');
    readDataFromFile(directory);
    readCommonUsedLineFromFile(directory);
    readChannel(directory);
    fillLanguageNames();
    getSystemDpiScale();
}

void DataManager::getSystemDpiScale()
{
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        const double scale = screen->logicalDotsPerInch() / 96.0;
        debugLine() << "放大比例:" << scale;
        setDpiScale(scale);
    }
}

void DataManager::externMessageReceived(const QString &message)
{
    emit sendExternMessageReceived(message);
}

QList<QObject *> DataManager::getLineFeekbackQuestionByLauguage(const QString &language)
{
    using Text = QString LineFeedbackQuestion::*;
    static const QHash<QString, Text> textByLanguage{
        {QStringLiteral("_en"), &LineFeedbackQuestion::english},
        {QStringLiteral("_de"), &LineFeedbackQuestion::german},
        {QStringLiteral("_ru"), &LineFeedbackQuestion::russian},
        {QStringLiteral("_zh_hk"), &LineFeedbackQuestion::simplifiedChinese},
        {QStringLiteral("_ar"), &LineFeedbackQuestion::arabic},
    };
    const Text text = textByLanguage.value(language, &LineFeedbackQuestion::english);

    for (QObject *previous : qAsConst(m_questionsForQml)) {
        previous->deleteLater();
    }
    m_questionsForQml.clear();
    m_questionsForQml.reserve(lineFeedbackQuestionList.size());
    for (const LineFeedbackQuestion &question : qAsConst(lineFeedbackQuestionList)) {
        auto *shown = new LineFeedbackQuestionForQml(this);
        shown->setId(question.id);
        shown->setSn(question.sn);
        shown->setQuestions((question.*text).isEmpty() ? question.english : question.*text);
        m_questionsForQml.append(shown);
    }
    return m_questionsForQml;
}

QObject *virtualDataManager(QQmlEngine * /*engine*/, QJSEngine * /*scriptEngine*/)
{
    DataManager *store = DataManager::getInstance();
    // An engine deletes the singletons that it owns, and this one outlives every engine.
    QQmlEngine::setObjectOwnership(store, QQmlEngine::CppOwnership);
    return store;
}
