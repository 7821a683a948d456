#pragma once

#include "base/LoggedText.h"

#include <QDebug>
#include <QLoggingCategory>

#include <type_traits>

// A line of the debug log. Whatever is not a literal of this program goes in as LoggedText: it may
// have come from a server or from a file. The text is put together without QDebug, whose streams
// take longer than most functions that write a line.
class DebugLine {
public:
    DebugLine() = default;
    ~DebugLine()
    {
        qt_message_output(QtDebugMsg, QMessageLogContext(nullptr, 0, nullptr, "default"), m_text);
    }
    Q_DISABLE_COPY(DebugLine)

    DebugLine &operator<<(const QString &text) { return put(LoggedText::of(text)); }
    DebugLine &operator<<(const QByteArray &text) { return put(LoggedText::of(text)); }
    DebugLine &operator<<(const QJsonObject &object) { return put(LoggedText::of(object)); }
    // A literal, a number, or what is one line already.
    template <typename Value> DebugLine &put(const Value &value)
    {
        if constexpr (std::is_same_v<Value, QString>) {
            m_text += value;
        } else if constexpr (std::is_convertible_v<const Value &, const char *>) {
            m_text += QString::fromUtf8(value);
        } else if constexpr (std::is_integral_v<Value> && sizeof(Value) >= sizeof(int)) {
            m_text += QString::number(value);
        } else {
            QDebug(&m_text).noquote().nospace() << value;
        }
        return *this;
    }
    template <typename Value> DebugLine &operator<<(const Value &value)
    {
        if constexpr (std::is_convertible_v<const Value &,
                          QString> && !std::is_convertible_v<const Value &, const char *>) {
            return put(LoggedText::of(QString(value)));
        } else {
            return put(value);
        }
    }

private:
    QString m_text;
};

// One line of the debug log: a label directly followed by its values, without quotes or blanks.
// Nothing behind it is evaluated while debug lines are switched off (QT_LOGGING_RULES), so a value
// must not do anything that is needed.
#define debugLine() /* NOLINT: reads as the function that it stands for */                         \
    for (bool isHeard = QLoggingCategory::defaultCategory()->isDebugEnabled(); isHeard;            \
         isHeard = false)                                                                          \
    DebugLine()
