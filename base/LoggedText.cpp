#include "base/LoggedText.h"

#include <QJsonDocument>

#include <algorithm>

namespace {

// C0, DEL and C1: what a terminal obeys, and what ends a line.
bool isControl(QChar character)
{
    const ushort code = character.unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0);
}

QString escaped(const QString &text)
{
    QString line;
    line.reserve(text.size() + 16);
    for (const QChar character : text) {
        if (!isControl(character)) {
            line += character;
        } else if (character == QLatin1Char('\n')) {
            line += QLatin1String("\\n");
        } else {
            line += QStringLiteral("\\x%1").arg(character.unicode(), 2, 16, QLatin1Char('0'));
        }
    }
    return line;
}

} // namespace

QString LoggedText::of(const QString &text)
{
    // Most texts are short and harmless, and are logged as they are.
    if (text.size() > longest / 3) { // a character takes three bytes at most
        return of(text.toUtf8());
    }
    return std::none_of(text.cbegin(), text.cend(), isControl) ? text : escaped(text);
}

QString LoggedText::of(const QByteArray &body)
{
    const QString shown = escaped(QString::fromUtf8(body.left(longest)));
    return body.size() <= longest
        ? shown
        : shown + QStringLiteral("… (%1 bytes more)").arg(body.size() - longest);
}

QString LoggedText::of(const QJsonObject &object)
{
    return QLatin1String("QJsonObject(") + of(QJsonDocument(object).toJson(QJsonDocument::Compact))
        + QLatin1Char(')');
}
