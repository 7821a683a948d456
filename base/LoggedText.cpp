#include "base/LoggedText.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QLocale>

#include <algorithm>
#include <cmath>

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

QString shortened(const QByteArray &text, int shown, const QString &amount)
{
    const QString line = escaped(QString::fromUtf8(text.left(shown)));
    return text.size() <= shown
        ? line
        : line + QStringLiteral("… (%1%2 bytes more)").arg(amount).arg(text.size() - shown);
}

// Compact JSON that stops when it is long enough: a catalogue of megabytes is written in parts that
// nobody would see.
class JsonBeginning {
public:
    explicit JsonBeginning(int length)
        : m_length(length)
    {
    }

    void write(const QJsonObject &object)
    {
        const char *separator = "{";
        for (auto member = object.begin(); member != object.end() && !isLong(); ++member) {
            m_text += separator;
            write(member.key());
            m_text += ':';
            write(member.value());
            separator = ",";
        }
        m_text += object.isEmpty() ? "{}" : "}";
    }

    bool isLong() const { return m_text.size() > m_length; }
    const QByteArray &text() const { return m_text; }

private:
    void write(const QJsonValue &value)
    {
        switch (value.type()) {
        case QJsonValue::Object:
            return write(value.toObject());
        case QJsonValue::Array:
            return write(value.toArray());
        case QJsonValue::String:
            return write(value.toString());
        case QJsonValue::Double:
            return write(value.toDouble());
        case QJsonValue::Bool:
            m_text += value.toBool() ? "true" : "false";
            return;
        default:
            m_text += "null";
        }
    }

    void write(const QJsonArray &array)
    {
        const char *separator = "[";
        for (auto value = array.begin(); value != array.end() && !isLong(); ++value) {
            m_text += separator;
            write(*value);
            separator = ",";
        }
        m_text += array.isEmpty() ? "[]" : "]";
    }

    void write(const QString &text)
    {
        QByteArray bytes = text.toUtf8();
        bytes.replace('\\', "\\\\").replace('"', "\\\"");
        m_text += '"' + bytes + '"';
    }

    void write(double number)
    {
        constexpr double exact = 9007199254740992; // whole numbers up to here are exact
        const bool isWhole = std::abs(number) <= exact && std::floor(number) == number;
        m_text += isWhole ? QByteArray::number(static_cast<qint64>(number))
                          : QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
    }

    QByteArray m_text;
    int m_length;
};

} // namespace

QString LoggedText::of(const QString &text)
{
    // Most texts are short and harmless, and are logged as they are.
    if (text.size() > longest / 3) { // a character takes three bytes at most
        return of(text.toUtf8());
    }
    return std::none_of(text.cbegin(), text.cend(), isControl) ? text : escaped(text);
}

QString LoggedText::of(const QByteArray &body) { return shortened(body, longest, QString()); }

QString LoggedText::of(const QJsonObject &object, int shown, int counted)
{
    JsonBeginning json(counted);
    json.write(object);
    const QString amount = json.isLong() ? QStringLiteral("at least ") : QString();
    return QLatin1String("QJsonObject(") + shortened(json.text(), shown, amount) + QLatin1Char(')');
}
