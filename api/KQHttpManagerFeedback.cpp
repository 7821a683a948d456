#include "api/KQHttpManager.h"

#include "base/DebugLine.h"
#include "base/ReplyEnvelope.h"
#include "settings/DataManager.h"

#include <QJsonArray>

void KQHttpManager::feedBack(QString tag, const QString &content, const QString &type,
    const QString &linkman, const QString &attachment, const QString &props, const QString &rate)
{
    if (type == QLatin1String("2")) {
        tag.chop(1); // the screen of this type ends its list of tags with a comma
    }
    // The server takes the address as it was typed: nothing in it is escaped.
    const QString contact = QLatin1String(R"({"email":")")
        + (linkman.isEmpty() ? m_dataManager->getUserName() : linkman) + QLatin1String(R"("})");
    debugLine() << "tag:" << tag;
    debugLine() << "contents:" << content;
    debugLine() << "type:" << type;
    debugLine() << "linkman:" << contact;
    debugLine() << "attachment:" << attachment; // the server takes none
    debugLine() << "props:" << props;
    debugLine() << "rate:" << rate;
    post(Request::FeedBack,
        {{"tag", tag}, {"content", content}, {"type", type}, {"linkman", contact}, {"props", props},
            {"rate", rate}});
}

void KQHttpManager::dealFeedBackInfo(QJsonObject &object)
{
    debugLine() << "dealFeedBackInfo:" << object;
    emit feedBackStatus(succeeded(object), messageOf(object));
}

void KQHttpManager::getLineFeedBackQuestion()
{
    debugLine() << "getLineFeedBackQuestion--------------------------------->";
    post(Request::LineFeedBackQuestion);
}

void KQHttpManager::dealLineFeedBackQuestion(QJsonObject &object)
{
    debugLine() << "dealLineFeedBackQuestion:" << object;
    if (!succeeded(object)) {
        return;
    }
    QList<LineFeedbackQuestion> questions;
    const QJsonArray data = object.value(QLatin1String("data")).toArray();
    questions.reserve(data.size());
    for (const QJsonValue &value : data) {
        const QJsonObject element = value.toObject();
        LineFeedbackQuestion question;
        question.id = element.value(QLatin1String("id")).toInt();
        question.sn = textOf(element, "sn");
        question.arabic = textOf(element, "_ar");
        question.german = textOf(element, "_de");
        question.english = textOf(element, "_en");
        question.russian = textOf(element, "_ru");
        question.simplifiedChinese = textOf(element, "_zh_cn");
        debugLine() << question.simplifiedChinese << question.sn;
        questions.append(question);
    }
    m_dataManager->setLineFeedbackQuestionList(questions);
    emit sendLineFeedBackQuestions(true, QStringLiteral("success"));
}
