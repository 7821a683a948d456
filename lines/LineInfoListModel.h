#pragma once

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QString>

// Turns the server's line list into area records that hold their line records (LineInfo).
// The builders only append and delete nothing: the records have no parent and belong to whoever
// owns the catalogue.
class LineInfoListModel : public QObject {
    Q_OBJECT

public:
    explicit LineInfoListModel(QObject *parent = nullptr);

    // Both return false when the reply's "code" is not 0; retMessage is then the reply's "msg".
    Q_INVOKABLE bool createLineInfoModelList(QJsonObject &json, QString &retMessage);
    Q_INVOKABLE bool createLineInfoModelListByCountry(QJsonObject &json, QString &retMessage);

    Q_INVOKABLE QList<QObject *> getLineInfoModelList() const;

private:
    QList<QObject *> m_areas;
};
