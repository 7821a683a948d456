#pragma once

#include <string>

// The reversible text cipher of the discovery files. It hides, it does not protect: nothing
// authenticates a text, and a wrong key yields garbage instead of an error.
// GUI thread only: the salt comes from the shared, unseeded rand().
class Encryption {
public:
    // Starts with the default key; its time stamp is taken here, once, and serves every encode().
    Encryption();

    // The process-wide object, made on first use; its time stamp is that of the first call.
    static Encryption &GetInstance();

    void SetKey(std::string key);
    void SetDefaultKey();

    // Never fails. With an empty key the result is the base64 of the masked time stamp alone.
    std::string encode(std::string plain);

    // Empty when the text holds fewer than 13 bytes; throws std::out_of_range when it holds 13 to
    // 25, for the trailers are cut at fixed widths. With an empty key the result is empty.
    std::string decode(std::string cipher);

    // 32 lower-case hexadecimal characters.
    std::string encode_to_md5(std::string s);

    std::string base64_encode(const unsigned char *bytes, unsigned int length);

    // Reads up to the first "=" or character outside the alphabet and ignores the rest.
    std::string base64_decode(const std::string &text);

    // As long as data; empty when the key is empty.
    std::string XorEncode(std::string data, const std::string &key);

    // 13 characters from ' ' to 'y'. The generator is never seeded, so the salts of every run
    // are the same: they give variety, not secrecy.
    std::string GetRandStr();

private:
    std::string m_key;
    long long m_timeStamp; // milliseconds since the Unix epoch
};
