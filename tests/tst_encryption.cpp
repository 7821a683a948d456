#include <QTest>

#include <cstdlib>
#include <stdexcept>

#include "crypto/Encryption.h"

namespace {

template <typename... Values> void row(const char *name, const Values &...values)
{
    (QTest::newRow(name) << ... << values);
}

} // namespace

class TestEncryption : public QObject {
    Q_OBJECT

private slots:
    void cipherTextsAreDeciphered_data()
    {
        QTest::addColumn<QString>("cipher");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("plain");
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
        for (const int size : {13, 20, 25})
            QTest::addRow("%d bytes", size)
                << QString(QByteArray(size, '1').toBase64()) << usual << "throws";
    }

    void cipherTextsAreDeciphered()
    {
        QFETCH(QString, cipher);
        QFETCH(QString, key);
        QFETCH(QString, plain);
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
        QByteArray everyByte;
        for (int i = 0; i < 256; ++i)
            everyByte.append(static_cast<char>(i));
        Encryption encryption;
        for (int size = 0; size <= everyByte.size(); ++size) {
            const QByteArray plain = everyByte.right(size);
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
            std::string key(keySize, 'k');
            key.back() = 'e';
            const std::string masked = Encryption().XorEncode(std::string(1001, '\0'), key);
            QCOMPARE(masked.size(), std::size_t(1001));
            for (std::size_t i = 0; i < masked.size(); ++i)
                QCOMPARE(masked[i], key[i % keySize]);
        }
        QVERIFY(Encryption().XorEncode("text", "").empty());
    }

    void everyRunHasTheSameSalts()
    {
        std::srand(1); // the state of a generator that nobody seeds
        QCOMPARE(Encryption().GetRandStr(), std::string("i0;979N,e!@cR"));
    }
};

QTEST_APPLESS_MAIN(TestEncryption)
#include "tst_encryption.moc"
