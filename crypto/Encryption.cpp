#include "crypto/Encryption.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QString>

#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

constexpr char defaultKey[] = "Q#pd]3Ha>wz-8&Mv";
constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t trailerWidth = 13; // the salt's, and that of the time stamp's decimal digits

constexpr unsigned char foreign = 0x80; // no index of the alphabet has this bit

using IndexTable = std::array<unsigned char, 256>;

constexpr IndexTable makeIndexTable()
{
    IndexTable table{};
    for (unsigned char &index : table) {
        index = foreign;
    }
    unsigned char next = 0;
    for (const char character : alphabet) {
        table[static_cast<unsigned char>(character)] = next++;
    }
    return table;
}

constexpr IndexTable indexByCharacter = makeIndexTable();

unsigned int indexOf(char character)
{
    return indexByCharacter[static_cast<unsigned char>(character)];
}

std::string toBase64(const unsigned char *bytes, std::size_t length)
{
    std::string text((length + 2) / 3 * 4, '=');
    char *out = text.data();
    std::size_t i = 0;
    for (; i + 3 <= length; i += 3) {
        const unsigned int group = static_cast<unsigned int>(bytes[i]) << 16
            | static_cast<unsigned int>(bytes[i + 1]) << 8 | bytes[i + 2];
        *out++ = alphabet[group >> 18];
        *out++ = alphabet[group >> 12 & 63U];
        *out++ = alphabet[group >> 6 & 63U];
        *out++ = alphabet[group & 63U];
    }
    if (i < length) {
        const bool hasTwo = i + 1 < length;
        const unsigned int group = static_cast<unsigned int>(bytes[i]) << 16
            | (hasTwo ? static_cast<unsigned int>(bytes[i + 1]) << 8 : 0U);
        *out++ = alphabet[group >> 18];
        *out++ = alphabet[group >> 12 & 63U];
        if (hasTwo) {
            *out++ = alphabet[group >> 6 & 63U];
        }
    }
    return text;
}

std::string toBase64(const std::string &bytes)
{
    return toBase64(reinterpret_cast<const unsigned char *>(bytes.data()), bytes.size());
}

// The bytes never overtake the characters that they come from, so one buffer serves both.
void fromBase64InPlace(std::string &text)
{
    const char *in = text.data();
    const char *const end = in + text.size();
    char *out = text.data();
    for (; end - in >= 4; in += 4) {
        const unsigned int a = indexOf(in[0]);
        const unsigned int b = indexOf(in[1]);
        const unsigned int c = indexOf(in[2]);
        const unsigned int d = indexOf(in[3]);
        if (((a | b | c | d) & foreign) != 0) {
            break;
        }
        const unsigned int group = a << 18 | b << 12 | c << 6 | d;
        *out++ = static_cast<char>(group >> 16);
        *out++ = static_cast<char>(group >> 8);
        *out++ = static_cast<char>(group);
    }
    unsigned int group = 0;
    int count = 0;
    for (; in != end && indexOf(*in) != foreign; ++in) {
        group = group << 6 | indexOf(*in);
        ++count;
    }
    if (count == 2) {
        *out++ = static_cast<char>(group >> 4);
    } else if (count == 3) {
        *out++ = static_cast<char>(group >> 10);
        *out++ = static_cast<char>(group >> 2);
    }
    text.resize(static_cast<std::size_t>(out - text.data()));
}

// key must not be empty.
void xorInPlace(std::string &data, const std::string &key)
{
    std::size_t at = 0;
    for (char &byte : data) {
        byte = static_cast<char>(byte ^ key[at]);
        at = at + 1 == key.size() ? 0 : at + 1;
    }
}

} // namespace

Encryption::Encryption()
    : m_key(defaultKey)
    , m_timeStamp(QDateTime::currentMSecsSinceEpoch())
{
}

Encryption &Encryption::GetInstance()
{
    static Encryption instance;
    return instance;
}

void Encryption::SetKey(std::string key) { m_key = std::move(key); }

void Encryption::SetDefaultKey() { m_key = defaultKey; }

std::string Encryption::encode(std::string plain)
{
    const std::string stamp = std::to_string(m_timeStamp);
    const std::string salt = GetRandStr();
    std::string block = std::move(plain);
    block = m_key.empty() ? std::string()
                          : XorEncode(toBase64(block), encode_to_md5(stamp + salt + m_key));
    block += XorEncode(stamp, salt);
    block += XorEncode(salt, m_key);
    return toBase64(block);
}

std::string Encryption::decode(std::string cipher)
{
    fromBase64InPlace(cipher);
    const std::size_t size = cipher.size();
    if (size < trailerWidth || m_key.empty()) {
        return {};
    }
    const std::string salt = XorEncode(cipher.substr(size - trailerWidth), m_key);
    // Fewer bytes than two trailers wrap the position around, which substr() refuses.
    const std::string stamp = XorEncode(cipher.substr(size - 2 * trailerWidth, trailerWidth), salt);
    cipher.resize(size - 2 * trailerWidth);
    xorInPlace(cipher, encode_to_md5(stamp + salt + m_key));
    fromBase64InPlace(cipher);
    return cipher;
}

std::string Encryption::encode_to_md5(std::string s)
{
    s = QString::fromStdString(s).toUtf8().toStdString(); // replaces what is no UTF-8
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(s.data(), static_cast<int>(s.size()));
    return hash.result().toHex().toStdString();
}

std::string Encryption::base64_encode(const unsigned char *bytes, unsigned int length)
{
    return toBase64(bytes, length);
}

std::string Encryption::base64_decode(const std::string &text)
{
    std::string bytes = text;
    fromBase64InPlace(bytes);
    return bytes;
}

std::string Encryption::XorEncode(std::string data, const std::string &key)
{
    if (key.empty()) {
        return {};
    }
    xorInPlace(data, key);
    return data;
}

std::string Encryption::GetRandStr()
{
    std::string salt(trailerWidth, ' ');
    for (char &character : salt) {
        character = static_cast<char>(std::rand() % 90 + 32);
    }
    return salt;
}
