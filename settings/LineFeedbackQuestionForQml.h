#pragma once

#include <QObject>
#include <QString>

// A feedback question in the interface language, as the feedback screen binds to it.
class LineFeedbackQuestionForQml : public QObject {
    Q_OBJECT
    Q_PROPERTY(int id READ getId WRITE setId NOTIFY idChanged)
    Q_PROPERTY(QString sn READ getSn WRITE setSn NOTIFY snChanged)
    Q_PROPERTY(QString questions READ getQuestions WRITE setQuestions NOTIFY questionsChanged)
    Q_PROPERTY(bool isSelected READ getIsSelected WRITE setIsSelected NOTIFY isSelectedChanged)

public:
    explicit LineFeedbackQuestionForQml(QObject *parent = nullptr);

    int getId() const { return m_id; }
    QString getSn() const { return m_sn; }
    QString getQuestions() const { return m_questions; }
    bool getIsSelected() const { return m_isSelected; }

    void setId(int value);
    void setSn(const QString &value);
    void setQuestions(const QString &value);
    void setIsSelected(bool value);

signals:
    void idChanged();
    void snChanged();
    void questionsChanged();
    void isSelectedChanged();

private:
    int m_id = 0;
    QString m_sn;
    QString m_questions;
    bool m_isSelected = false;
};
