// vorn-discovery-file: for whoever publishes the discovery files. `encode` prints the text to put
// on the mirrors, `decode` shows what clients make of a published text.

#include "crypto/Encryption.h"

#include <QFile>
#include <QUrl>

#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

constexpr char usage[] = "usage: vorn-discovery-file encode ADDRESS\n"
                         "       vorn-discovery-file decode FILE|-\n";

int fail(const std::string &message)
{
    std::cerr << "vorn-discovery-file: " << message << '\n';
    return 1;
}

// Clients put their paths directly behind it, and compare the result literally with the addresses
// of replies, which Qt writes in normal form.
bool isBaseAddress(const std::string &address)
{
    const bool hasScheme = address.rfind("http://", 0) == 0 || address.rfind("https://", 0) == 0;
    const QString text = QString::fromStdString(address);
    return hasScheme && address.back() != '/' && QUrl(text).toString() == text;
}

int encode(const std::string &address)
{
    if (!isBaseAddress(address)) {
        return fail(
            "the address has to start with http:// or https://, to end without a slash, and "
            "to be in normal form (host in lower case)");
    }
    std::cout << Encryption().encode(address);
    return std::cout.flush() ? 0 : fail("cannot write the text");
}

int decode(const std::string &name)
{
    QFile file(QString::fromLocal8Bit(name.c_str()));
    const bool opened =
        name == "-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!opened) {
        return fail(name + " cannot be read");
    }
    std::string address;
    try {
        address = Encryption().decode(file.readAll().toStdString());
    } catch (const std::out_of_range &) {
        return fail(name + " is no discovery file: it is cut off");
    }
    if (address.empty()) {
        return fail(name + " is no discovery file: it deciphers to nothing");
    }
    std::cout << address << '\n';
    return isBaseAddress(address) ? 0 : fail(name + " deciphers to what is no base address");
}

} // namespace

int main(int argumentCount, char *arguments[])
{
    const std::string command = argumentCount == 3 ? arguments[1] : "";
    if (command == "encode") {
        return encode(arguments[2]);
    }
    if (command == "decode") {
        return decode(arguments[2]);
    }
    std::cerr << usage;
    return 2;
}
