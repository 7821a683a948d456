#include "base/LoggedText.h"

#include <QJsonDocument>

namespace {

bool isControl(QChar character) { return character.category() == QChar::Other_Control; }

QString escaped(const QString &text)
{
    QString line;
    line.reserve(text.size());
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

QString LoggedText::of(const QByteArray &body)
{
    const QString shown = escaped(QString::fromUtf8(body.left(longest)));
    return body.size() <= longest
        ? shown
        : shown + QStringLiteral("… (%1 bytes more)").arg(body.size() - longest);
}

QString LoggedText::of(const QString &text) { return of(text.toUtf8()); }

QString LoggedText::of(const QJsonObject &object)
{
    return QLatin1String("QJsonObject(") + of(QJsonDocument(object).toJson(QJsonDocument::Compact))
        + QLatin1Char(')');
}
