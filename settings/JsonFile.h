#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <cstddef>
#include <optional>
#include <type_traits>
#include <variant>

// A text that Record keeps inside another record.
template <typename Record> struct JsonText {
    QString (Record::*read)() const;
    void (Record::*write)(const QString &);
};

// One key of a JSON object and the member of Record that it stands for.
template <typename Record> struct JsonField {
    const char *key = nullptr;
    std::variant<bool Record::*, int Record::*, QString Record::*, JsonText<Record>> member;
    bool isKeptWhenMissing = false; // else a missing key means false, 0 or an empty text
};

namespace JsonFile {

// Sets the members in the order of the table. Types are strict: a value of another type counts as
// false, 0 or an empty text.
template <typename Record, std::size_t Count>
void fill(Record &record, const QJsonObject &object, const JsonField<Record> (&fields)[Count])
{
    for (const JsonField<Record> &field : fields) {
        const QJsonValue value = object.value(QLatin1String(field.key));
        if (field.isKeptWhenMissing && value.isUndefined()) {
            continue;
        }
        const auto assign = [&record, &value](auto member) {
            using Member = decltype(member);
            if constexpr (std::is_same_v<Member, JsonText<Record>>) {
                (record.*member.write)(value.toString());
            } else if constexpr (std::is_same_v<Member, QString Record::*>) {
                record.*member = value.toString();
            } else if constexpr (std::is_same_v<Member, int Record::*>) {
                record.*member = value.toInt();
            } else {
                record.*member = value.toBool();
            }
        };
        std::visit(assign, field.member);
    }
}

template <typename Record, std::size_t Count>
QJsonObject object(const Record &record, const JsonField<Record> (&fields)[Count])
{
    QJsonObject result;
    for (const JsonField<Record> &field : fields) {
        const auto read = [&record](auto member) -> QJsonValue {
            if constexpr (std::is_same_v<decltype(member), JsonText<Record>>) {
                return (record.*member.read)();
            } else {
                return record.*member;
            }
        };
        result.insert(QLatin1String(field.key), std::visit(read, field.member));
    }
    return result;
}

enum class Access { AsUsual, OwnerOnly };

// As ReplacedFile::write() does. What cannot be written is left alone and said in the log only.
// OwnerOnly: mode 0600, else 0644.
void write(const QString &path, const QByteArray &content, Access access = Access::AsUsual);

// Logs every line behind `lineLabel`, then the text up to the first zero byte. Nothing when the
// file cannot be opened; a null document when the text is not JSON or the file too long for it.
std::optional<QJsonDocument> read(const QString &path, const char *lineLabel = "line:");

} // namespace JsonFile
