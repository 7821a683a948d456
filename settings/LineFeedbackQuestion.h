#pragma once

#include <QString>

// One ready-made problem of the feedback screen, as the server sends it.
struct LineFeedbackQuestion {
    int id = 0;
    QString sn; // short code of the problem
    QString arabic;
    QString german;
    QString english;
    QString russian;
    QString simplifiedChinese;
    QString spare; // the server sends nothing for it
};
