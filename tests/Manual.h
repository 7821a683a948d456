#pragma once

#include "Support.h"

// The manuals in docs/ hold tables of examples, which tests run.

// What stands in code quotes.
inline QStringList codeIn(const QString &text)
{
    static const QRegularExpression code("`([^`]*)`");
    QStringList words;
    for (auto found = code.globalMatch(text); found.hasNext();) {
        words.append(found.next().captured(1));
    }
    return words;
}

// The cells of the table below a heading, without the heading line of the table.
inline QList<QStringList> tableBelow(const QString &heading, const QString &manual = "protocol.md")
{
    QList<QStringList> rows;
    const QString text = contentOf(VORN_SOURCE_DIR "/docs/" + manual);
    for (const QString &line : text.section("\n" + heading + "\n", 1).split('\n')) {
        if (line.startsWith("|")) {
            rows.append(line.mid(1).split('|'));
        } else if (!rows.isEmpty()) {
            break;
        }
    }
    if (rows.size() < 3) // or a test would run over nothing
        qFatal("%s has no table below \"%s\"", qPrintable(manual), qPrintable(heading));
    return rows.mid(2);
}
