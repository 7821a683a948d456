#include "Manual.h"
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

// Made with python3 (base64, hashlib.md5) for the time stamp 1700000000000.
const char oneLetter[] = "UnVfBWJWXEQQX1YQAQMQU1g4CgcfSwQNS1pYSwgD";
const char usualKey[] = "Q#pd]3Ha>wz-8&Mv";

QByteArray encodedOnes(int count) { return QByteArray(count, '1').toBase64(); }

} // namespace

class TestEncryption : public QObject {
    Q_OBJECT

private slots:
    void cipherTextsAreDeciphered_data()
    {
        const Rows<CipherText> row;
        row("a key of one byte", {oneLetter, "k", "x"});
        row("another key", {oneLetter, usualKey, ""});
        row("20 bytes without a key", {encodedOnes(20), "", ""});
        row("12 bytes: no trailer", {encodedOnes(12), usualKey, ""});
        row("13 bytes: one trailer", {encodedOnes(13), usualKey, "", true});
        row("25 bytes: not yet two trailers", {encodedOnes(25), usualKey, "", true});
    }

    void cipherTextsAreDeciphered()
    {
        const auto [cipher, key, plain, throws] = Rows<CipherText>::fetch();
        Encryption encryption;
        encryption.SetKey(key.toStdString());
        const std::string text = cipher.toStdString();
        if (throws)
            QVERIFY_EXCEPTION_THROWN(encryption.decode(text), std::out_of_range);
        else
            QCOMPARE(QByteArray::fromStdString(encryption.decode(text)), plain);
    }

    void base64IsReadAsTheManualSays()
    {
        for (const QStringList &cells : tableBelow("### Base64")) {
            const std::string text = codeIn(cells[0])[0].toStdString();
            QCOMPARE(Encryption().base64_decode(text), codeIn(cells[1])[0].toStdString());
        }
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
        QVERIFY(encryption.encode("") != encryption.encode(""));
        encryption.SetKey("");
        QCOMPARE(encryption.base64_decode(encryption.encode("text")).size(), std::size_t(13));
        encryption.SetDefaultKey();
        QCOMPARE(Encryption::GetInstance().decode(encryption.encode("text")), std::string("text"));
        std::srand(1); // the state of a generator that nobody seeds: every run has these salts
        QCOMPARE(Encryption().GetRandStr(), std::string("i0;979N,e!@cR"));
    }
};

QTEST_APPLESS_MAIN(TestEncryption)
#include "tst_encryption.moc"
