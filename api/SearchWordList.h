#pragma once

#include <QString>
#include <QStringList>

// What the user typed into the line search since the last upload, in its longest forms only: of
// "tok", "toky", "tokyo" the last one stays. Compared case-sensitively.
class SearchWordList {
public:
    void append(const QString &word); // ignores words of less than 3 characters
    void clear() { searchWordList.clear(); }
    QString joined() const { return searchWordList.join(QLatin1Char(',')); }

private:
    QStringList searchWordList;
};
