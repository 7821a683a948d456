#pragma once

#include "base/LoggedText.h"

#include <QDebug>
#include <QLoggingCategory>

// A line of the debug log. Whatever is not a literal of this program goes in as LoggedText: it may
// have come from a server or from a file.
class DebugLine {
public:
    DebugLine &operator<<(const QString &text) { return put(LoggedText::of(text)); }
    DebugLine &operator<<(const QByteArray &text) { return put(LoggedText::of(text)); }
    DebugLine &operator<<(const QJsonObject &object) { return put(LoggedText::of(object)); }
    // A literal, a number, or what is one line already.
    template <typename Value> DebugLine &put(const Value &value)
    {
        m_debug << value;
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
    QDebug m_debug = qDebug().noquote().nospace();
};

// One line of the debug log: a label directly followed by its values, without quotes or blanks.
// Nothing behind it is evaluated while debug lines are switched off (QT_LOGGING_RULES), so a value
// must not do anything that is needed.
#define debugLine() /* NOLINT: reads as the function that it stands for */                         \
    for (bool isHeard = QLoggingCategory::defaultCategory()->isDebugEnabled(); isHeard;            \
         isHeard = false)                                                                          \
    DebugLine()
