#include "Support.h"
#include "crypto/Encryption.h"

#include <cstdlib>
#include <stdexcept>

class TestEncryption : public QObject {
    Q_OBJECT

private slots:
    void cipherTextsAreDeciphered_data()
    {
        const Table<QString, QString, QString> row; // cipher text, key, plain text
        // Made with python3 (base64, hashlib.md5) for the time stamp 1700000000000.
        const char address[] =
            "BSlhAgJ2DhMpVndAUDJWVgEGfE0BXXVDfQtuDWtuVEcGJmYPYlZcRBBfVhABAxBTWAJC"
            "HBB9XC5BD0RaTlA=";
        const char usual[] = "Q#pd]3Ha>wz-8&Mv";
        row("an address", address, usual, "http://api.vornvpn.example");
        row("short key", "UnVfBWJWXEQQX1YQAQMQU1g4CgcfSwQNS1pYSwgD", "k", "x");
        row("another key", address, "wrong key", "");
        row("no key", address, "", "");
        row("20 bytes, no key", "MTIzNDU2Nzg5MDEyMzQ1Njc4OTA=", "", "");
        row("12 bytes", "MTIzNDU2Nzg5MDEy", usual, "");
        row("a captive portal's page", "<html>", usual, "");
        row("13 bytes", QByteArray(13, '1').toBase64(), usual, "throws");
        row("25 bytes", QByteArray(25, '1').toBase64(), usual, "throws");
    }

    void cipherTextsAreDeciphered()
    {
        const auto [cipher, key, plain] = Table<QString, QString, QString>::fetch();
        Encryption encryption;
        encryption.SetKey(key.toStdString());
        if (plain == QLatin1String("throws"))
            QVERIFY_EXCEPTION_THROWN(encryption.decode(cipher.toStdString()), std::out_of_range);
        else
            QCOMPARE(QString::fromStdString(encryption.decode(cipher.toStdString())), plain);
    }

    void base64ReadingStopsAtForeignCharacters()
    {
        const std::pair<std::string, std::string> rows[] = {{"Q", ""}, {"QQ", "A"}, {"QUI=", "AB"},
            {"QUJDR", "ABC"}, {"QUJD=UVG", "ABC"}, {"QUJDRE=GQUJD", "ABCD"}, {"QUJD-_-_", "ABC"},
            {"QUJDRE\xC3\xA4", "ABCD"}};
        for (const auto &[text, bytes] : rows)
            QCOMPARE(Encryption().base64_decode(text), bytes);
    }

    void whatWasEncipheredComesBack()
    {
        QByteArray plain;
        Encryption encryption;
        for (int size = 0; size <= 256; ++size, plain.append(static_cast<char>(size))) {
            const auto *bytes = reinterpret_cast<const unsigned char *>(plain.constData());
            QCOMPARE(
                encryption.base64_encode(bytes, unsigned(size)), plain.toBase64().toStdString());
            const std::string cipher = encryption.encode(plain.toStdString());
            QCOMPARE(QByteArray::fromStdString(Encryption().decode(cipher)), plain);
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
