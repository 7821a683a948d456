#pragma once

#include <QList>
#include <QString>

struct CommonUsedLine {
    int lineId = 0;
    int usedNum = 0;
};

// How often the lines of one area were used; the newest line stands first.
struct CommonUsedArea {
    QString lineArea;
    int usedNum = 0;
    QList<CommonUsedLine> lineUsedList;
};
