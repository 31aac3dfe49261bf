#include "ArchiveReader.h"

#include "JsonDocument.h"
#include "NarrowText.h"

#include <kiv/system/StoredPath.h>

#include <QString>

#include <zip.h>

namespace kiv {

namespace {

String nameProblem(const String& name)
{
    const std::wstring wide = QString::fromUtf8(name.c_str()).toStdWString();
    if (name.empty())
        return "a member without a name";
    if (name.find('\\') != String::npos)
        return "a member's name may not contain a backslash";
    if (system::IsAbsolutePath(wide))
        return "a member's name may not be absolute";
    if (system::ClimbsOut(wide))
        return "a member's name may not leave the archive's folder";
    return {};
}

struct CloseMember {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

}  // namespace

CArchiveReader::CArchiveReader() = default;
CArchiveReader::~CArchiveReader() = default;

void CArchiveReader::Discard::operator()(zip* archive) const
{
    zip_discard(archive);
}

bool CArchiveReader::Refuse(const String& member, const String& reason, CParseError& error) const
{
    error = {member.empty() ? m_fileName : m_fileName + "/" + NarrowFromUtf8(member), reason};
    return false;
}

bool CArchiveReader::Open(const std::wstring& path, CParseError& error)
{
    m_fileName = FilePlace(path);
    QString reason;
    if (!system::ReadWholeFile(system::NativePath(path), MaxUnpackedBytes, m_bytes, reason))
        return Refuse({}, reason.toLocal8Bit().toStdString(), error);
    return openBytes(error) && checkMembers(error);
}

bool CArchiveReader::openBytes(CParseError& error)
{
    // Every member has a record with this mark in the directory; counting them first spares the tables that a directory
    // of millions would take.
    if (m_bytes.count("PK\x01\x02") > MaxMembers)
        return Refuse({}, "has more than " + std::to_string(MaxMembers) + " members", error);
    zip_error_t problem;
    zip_error_init(&problem);
    zip_source_t* source = zip_source_buffer_create(m_bytes.constData(), zip_uint64_t(m_bytes.size()), 0, &problem);
    m_archive.reset(source ? zip_open_from_source(source, ZIP_RDONLY, &problem) : nullptr);
    if (source && !m_archive)
        zip_source_free(source);
    const String reason = zip_error_strerror(&problem);
    zip_error_fini(&problem);
    return m_archive || Refuse({}, "is no readable archive: " + reason, error);
}

bool CArchiveReader::checkMembers(CParseError& error)
{
    const zip_int64_t count = zip_get_num_entries(m_archive.get(), 0);
    for (zip_int64_t index = 0; index < count; ++index) {
        if (!checkMember(zip_uint64_t(index), error))
            return false;
    }
    return true;
}

bool CArchiveReader::checkMember(unsigned long long index, CParseError& error)
{
    zip_stat_t status;
    zip_stat_init(&status);
    if (zip_stat_index(m_archive.get(), index, 0, &status) != 0 || !(status.valid & ZIP_STAT_NAME))
        return Refuse({}, "has a member without a name", error);
    const String name = status.name;
    const String problem = nameProblem(name);
    if (!problem.empty())
        return Refuse(name, problem, error);
    if (!(status.valid & ZIP_STAT_ENCRYPTION_METHOD) || status.encryption_method != ZIP_EM_NONE)
        return Refuse(name, "is encrypted", error);
    return m_members.emplace(name, index).second || Refuse(name, "occurs twice", error);
}

bool CArchiveReader::Read(const String& name, long long maxBytes, QByteArray& bytes, CParseError& error)
{
    const auto found = m_members.find(name);
    if (found == m_members.end())
        return Refuse(name, "there is no such member", error);
    const std::unique_ptr<zip_file_t, CloseMember> file(zip_fopen_index(m_archive.get(), found->second, 0));
    if (!file)
        return Refuse(name, String("cannot be unpacked: ") + zip_strerror(m_archive.get()), error);
    QByteArray block(1 << 16, Qt::Uninitialized);
    bytes.clear();
    for (;;) {
        const zip_int64_t count = zip_fread(file.get(), block.data(), zip_uint64_t(block.size()));
        if (count < 0)
            return Refuse(name, String("cannot be unpacked: ") + zip_file_strerror(file.get()), error);
        if (count == 0)
            return true;
        m_unpacked += count;
        if (bytes.size() + count > maxBytes || m_unpacked > MaxUnpackedBytes)
            return Refuse(name, "unpacks to more than is allowed", error);
        bytes.append(block.constData(), int(count));
    }
}

}  // namespace kiv
