#pragma once

#include <QByteArray>
#include <QPair>
#include <QVector>

using RequestHeaders = QVector<QPair<QByteArray, QByteArray>>; // names and values as sent

// What a signature is computed over, in the local 8-bit encoding: the headers that have a name and
// a value, sorted by name, as "name=value" joined by "&", directly followed by the salt that is
// shared with the server. Nothing is URL-encoded.
QByteArray signatureText(const RequestHeaders &headers);

// 32 lower-case hexadecimal characters.
QByteArray signatureOf(const QByteArray &text);
