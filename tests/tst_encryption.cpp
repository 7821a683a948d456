#include "Support.h"
#include "crypto/Encryption.h"

#include <cstdlib>
#include <stdexcept>

namespace {

struct CipherText {
    QByteArray cipher;
    QByteArray key;
    QByteArray plain;
    bool throws = false;
};

struct Base64Text {
    std::string text;
    std::string bytes;
};

// Made with python3 (base64, hashlib.md5) for the time stamp 1700000000000.
const char address[] = "BSlhAgJ2DhMpVndAUDJWVgEGfE0BXXVDfQtuDWtuVEcGJmYPYlZcRBBfVhABAxBTWAJC"
                       "HBB9XC5BD0RaTlA=";
const char usualKey[] = "Q#pd]3Ha>wz-8&Mv";

QByteArray encodedOnes(int count) { return QByteArray(count, '1').toBase64(); }

} // namespace

class TestEncryption : public QObject {
    Q_OBJECT

private slots:
    void cipherTextsAreDeciphered_data()
    {
        const Rows<CipherText> row;
        row("an address", {address, usualKey, "http://api.vornvpn.example"});
        row("a key of one byte", {"UnVfBWJWXEQQX1YQAQMQU1g4CgcfSwQNS1pYSwgD", "k", "x"});
        row("20 bytes without a key", {encodedOnes(20), "", ""});
        row("12 bytes: no trailer", {encodedOnes(12), usualKey, ""});
        row("13 bytes: one trailer", {encodedOnes(13), usualKey, "", true});
    }

    void cipherTextsAreDeciphered()
    {
        const CipherText given = Rows<CipherText>::fetch();
        Encryption encryption;
        encryption.SetKey(given.key.toStdString());
        const std::string cipher = given.cipher.toStdString();
        if (given.throws)
            QVERIFY_EXCEPTION_THROWN(encryption.decode(cipher), std::out_of_range);
        else
            QCOMPARE(QByteArray::fromStdString(encryption.decode(cipher)), given.plain);
    }

    void base64ReadingStopsAtForeignCharacters_data()
    {
        const Rows<Base64Text> row;
        row("two characters", {"QQ", "A"});
        row("padding", {"QUI=", "AB"});
        row("padding inside a group", {"QUJD=UVG", "ABC"});
        row("the alphabet of addresses", {"QUJD-_-_", "ABC"});
    }

    void base64ReadingStopsAtForeignCharacters()
    {
        const Base64Text given = Rows<Base64Text>::fetch();
        QCOMPARE(Encryption().base64_decode(given.text), given.bytes);
    }

    void whatWasEncipheredComesBack()
    {
        QByteArray plain;
        Encryption encryption;
        for (int size = 0; size <= 256; ++size) {
            const auto *bytes = reinterpret_cast<const unsigned char *>(plain.constData());
            QCOMPARE(
                encryption.base64_encode(bytes, unsigned(size)), plain.toBase64().toStdString());
            const std::string cipher = encryption.encode(plain.toStdString());
            QCOMPARE(QByteArray::fromStdString(Encryption().decode(cipher)), plain);
            plain.append(static_cast<char>(size));
        }
        QCOMPARE(encryption.encode("").size(), std::size_t(36)); // the trailers alone
        QVERIFY(encryption.encode("") != encryption.encode(""));
        encryption.SetKey("");
        QCOMPARE(encryption.base64_decode(encryption.encode("text")).size(), std::size_t(13));
        encryption.SetDefaultKey();
        QCOMPARE(Encryption::GetInstance().decode(encryption.encode("text")), std::string("text"));
    }

    void everyByteIsMaskedByItsKeyByte()
    {
        for (const std::size_t keySize : {1U, 13U, 32U, 5000U}) {
            const std::string key = std::string(keySize - 1, 'k') + 'e';
            const std::string masked = Encryption().XorEncode(std::string(1001, '\0'), key);
            QCOMPARE(masked.size(), std::size_t(1001));
            for (std::size_t i = 0; i < masked.size(); ++i)
                QCOMPARE(masked[i], key[i % keySize]);
        }
        QVERIFY(Encryption().XorEncode("text", "").empty());
        std::srand(1); // the state of a generator that nobody seeds: every run has these salts
        QCOMPARE(Encryption().GetRandStr(), std::string("i0;979N,e!@cR"));
    }
};

QTEST_APPLESS_MAIN(TestEncryption)
#include "tst_encryption.moc"
