#include "tests/fuzz/scratch_folder.h"

#include <QDir>
#include <QTemporaryDir>

#include <fstream>

namespace fs = std::filesystem;

namespace ScratchFolder {
namespace {

QString pattern()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QDir(memory).exists() ? memory : QDir::tempPath()) + QStringLiteral("/tarnel-XXXXXX");
}

} // namespace

const fs::path& path()
{
    static const QTemporaryDir folder(pattern());
    static const fs::path path = folder.path().toStdString();
    return path;
}

fs::path write(const fs::path& name, std::string_view bytes)
{
    const fs::path file = path() / name;
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file;
}

} // namespace ScratchFolder
