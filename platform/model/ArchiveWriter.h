#pragma once

#include <kiv/Types.h>

#include <QByteArray>

#include <map>

namespace kiv {

/// Makes zip archives whose bytes depend on nothing but their members: these stand in the order of their names, and
/// neither times nor rights are taken from the machine.
class CArchiveWriter {
public:
    /// `name` with "/" as separator. A pressed member is compressed: pictures mostly are already.
    void Add(const String& name, const QByteArray& bytes, bool pressed);
    bool Contains(const String& name) const { return m_members.count(name) != 0; }

    /// The archive; empty with a reason on failure.
    QByteArray ToBytes(String& reason) const;

private:
    struct Member {
        QByteArray bytes;
        bool pressed = false;
    };

    std::map<String, Member> m_members;
};

}  // namespace kiv
