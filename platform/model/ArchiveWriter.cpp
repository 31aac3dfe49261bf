#include "ArchiveWriter.h"

#include <memory>

#include <zip.h>

namespace kiv {

namespace {

struct FreeSource {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};

struct DiscardArchive {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

using Source = std::unique_ptr<zip_source_t, FreeSource>;
using Archive = std::unique_ptr<zip_t, DiscardArchive>;

bool addMember(zip_t* archive, const String& name, const QByteArray& bytes, bool pressed)
{
    zip_source_t* source = zip_source_buffer(archive, bytes.constData(), zip_uint64_t(bytes.size()), 0);
    const zip_int64_t index = source ? zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (index < 0) {
        zip_source_free(source);
        return false;
    }
    const auto member = zip_uint64_t(index);
    constexpr zip_uint16_t firstOfJanuary1980 = 0x0021;
    constexpr zip_uint32_t readableFile = 0100644U << 16;
    return zip_set_file_compression(archive, member, pressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0) == 0 &&
           zip_file_set_dostime(archive, member, 0, firstOfJanuary1980, 0) == 0 &&
           zip_file_set_external_attributes(archive, member, 0, ZIP_OPSYS_UNIX, readableFile) == 0;
}

QByteArray contents(zip_source_t* source)
{
    zip_stat_t status;
    if (zip_source_stat(source, &status) != 0 || zip_source_open(source) != 0)
        return {};
    QByteArray bytes(int(status.size), Qt::Uninitialized);
    const zip_int64_t count = zip_source_read(source, bytes.data(), status.size);
    zip_source_close(source);
    return count == bytes.size() ? bytes : QByteArray();
}

}  // namespace

void CArchiveWriter::Add(const String& name, const QByteArray& bytes, bool pressed)
{
    m_members[name] = {bytes, pressed};
}

QByteArray CArchiveWriter::ToBytes(String& reason) const
{
    const Source source(zip_source_buffer_create(nullptr, 0, 0, nullptr));
    Archive archive(source ? zip_open_from_source(source.get(), ZIP_CREATE | ZIP_TRUNCATE, nullptr) : nullptr);
    if (!archive) {
        reason = "an archive cannot be made";
        return {};
    }
    zip_source_keep(source.get());  // the archive took over the first reference
    bool added = true;
    for (const auto& [name, member] : m_members)
        added = added && addMember(archive.get(), name, member.bytes, member.pressed);
    if (!added || zip_close(archive.get()) != 0) {
        reason = zip_strerror(archive.get());
        return {};
    }
    archive.release();
    return contents(source.get());
}

}  // namespace kiv
