#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

// What came from outside, as it may stand in a debug line: one line without control characters,
// which are written as \n or \x1b, and of limited length; what is left out is told in bytes.
namespace LoggedText {

constexpr int longest = 16 * 1024; // bytes

QString of(const QString &text);
QString of(const QByteArray &body);
// QJsonObject({…}), compact. Not more than `counted` bytes are made, however large the object is;
// of a larger one only a least number of bytes is told.
QString of(const QJsonObject &object, int shown = longest, int counted = 1024 * 1024);

} // namespace LoggedText
