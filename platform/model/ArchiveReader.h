#pragma once

#include <kiv/ParseError.h>

#include <QByteArray>

#include <map>
#include <memory>

struct zip;

namespace kiv {

/// A zip archive that nobody vouches for. Opening it checks every member's name and kind before any is unpacked, and
/// unpacking counts the bytes that really come out: the sizes that an archive claims are not believed.
class CArchiveReader {
public:
    static constexpr int MaxMembers = 512;
    static constexpr long long MaxUnpackedBytes = 256LL * 1024 * 1024;

    CArchiveReader();
    ~CArchiveReader();

    /// `path` in stored form. The archive is read into memory first, so that it cannot change between check and use.
    bool Open(const std::wstring& path, CParseError& error);

    /// `name` with "/" as separator, UTF-8.
    bool Contains(const String& name) const { return m_members.count(name) != 0; }
    /// Unpacks the member; all that one reader unpacks counts towards MaxUnpackedBytes.
    bool Read(const String& name, long long maxBytes, QByteArray& bytes, CParseError& error);

    /// Names the member of this archive in an error. Always false.
    bool Refuse(const String& member, const String& reason, CParseError& error) const;

private:
    struct Discard {
        void operator()(zip* archive) const;
    };

    bool openBytes(CParseError& error);
    bool checkMembers(CParseError& error);
    bool checkMember(unsigned long long index, CParseError& error);

    String m_fileName;
    QByteArray m_bytes;
    std::unique_ptr<zip, Discard> m_archive;
    std::map<String, unsigned long long> m_members;
    long long m_unpacked = 0;
};

}  // namespace kiv
