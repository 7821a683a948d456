#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

// What came from outside, as it may stand in a debug line: one line without control characters,
// which are written as \n or \x1b, of at most 16 KiB; what is left out is told in bytes behind it.
namespace LoggedText {

constexpr int longest = 16 * 1024; // bytes

QString of(const QString &text);
QString of(const QByteArray &body);
// QJsonObject({…}), compact.
QString of(const QJsonObject &object);

} // namespace LoggedText
