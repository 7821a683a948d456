#include "settings/LineFeedbackQuestionForQml.h"

LineFeedbackQuestionForQml::LineFeedbackQuestionForQml(QObject *parent)
    : QObject(parent)
{
}

void LineFeedbackQuestionForQml::setId(int value)
{
    if (m_id != value) {
        m_id = value;
        emit idChanged();
    }
}

void LineFeedbackQuestionForQml::setSn(const QString &value)
{
    if (m_sn != value) {
        m_sn = value;
        emit snChanged();
    }
}

void LineFeedbackQuestionForQml::setQuestions(const QString &value)
{
    if (m_questions != value) {
        m_questions = value;
        emit questionsChanged();
    }
}

void LineFeedbackQuestionForQml::setIsSelected(bool value)
{
    if (m_isSelected != value) {
        m_isSelected = value;
        emit isSelectedChanged();
    }
}
