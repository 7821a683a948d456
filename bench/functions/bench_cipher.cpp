#include "crypto/Encryption.h"

#include <QCryptographicHash>

#include <random>
#include <string>

#include <benchmark/benchmark.h>

namespace {

std::string payload()
{
    std::mt19937 random(1);
    std::string bytes(1024 * 1024, '\0');
    for (char &byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

void decipher(benchmark::State &state)
{
    Encryption encryption;
    const std::string cipher = encryption.encode(payload());
    for (auto _ : state) {
        benchmark::DoNotOptimize(encryption.decode(cipher));
    }
}

void decipher_md5(benchmark::State &state)
{
    const QByteArray bytes = QByteArray::fromStdString(payload());
    for (auto _ : state) {
        benchmark::DoNotOptimize(QCryptographicHash::hash(bytes, QCryptographicHash::Md5));
    }
}

BENCHMARK(decipher)->Unit(benchmark::kMillisecond);
BENCHMARK(decipher_md5)->Unit(benchmark::kMillisecond);

} // namespace
