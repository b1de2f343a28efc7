// SPDX-License-Identifier: MIT
// Runs a fuzz target once on each file in the given folders: its inputs as a test. A missing folder is empty.
#include <QDir>

#include <cstdint>
#include <cstdio>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int *count, char ***arguments);

namespace {

bool replay(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    const std::vector<uint8_t> exact(bytes.begin(), bytes.end()); // no NUL behind the last byte, as with the fuzzer
    std::fprintf(stderr, "%s\n", qPrintable(path));               // the last line names the input that failed
    return LLVMFuzzerTestOneInput(exact.data(), exact.size()) == 0;
}

} // namespace

int main(int count, char **arguments)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&count, &arguments);
    int replayed = 0;
    for (int i = 1; i < count; ++i) {
        const QDir folder(QString::fromLocal8Bit(arguments[i]));
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        for (const QString &name : names) {
            if (!replay(folder.filePath(name)))
                return 1;
            ++replayed;
        }
    }
    std::printf("%d inputs\n", replayed);
    return replayed > 0 ? 0 : 1;
}
