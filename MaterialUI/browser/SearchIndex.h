#pragma once

#include "AppearanceEntry.h"

#include <array>
#include <atomic>
#include <future>

/// The characters and pairs of neighbours that a text has, ignoring case, as a set of 1,024 bits. A text that contains
/// another has all its bits, so most texts that do not contain a keyword are told without looking at them.
class CTextSignature {
public:
    void Add(const QString& text);
    bool Includes(const CTextSignature& other) const;

private:
    std::array<quint64, 16> m_bits{};
};

/// Lets a keyword be searched in the names and tags of a large library within a frame, although the tags alone may be
/// 50 megabytes: signatures of all entries, made on a thread of their own after the library is shown.
class CSearchIndex {
public:
    CSearchIndex() = default;
    ~CSearchIndex();
    CSearchIndex(const CSearchIndex&) = delete;
    CSearchIndex& operator=(const CSearchIndex&) = delete;

    /// Starts to make the signatures and numbers the entries. A small library gets none: it is looked through as fast.
    void Build(const CAppearanceEntries& entries);

    /// Waits until the signatures are made; call before MayContain.
    void Finish();
    /// False only when neither name nor tags of the entry contain the text of the signature.
    bool MayContain(const CAppearanceEntry& entry, const CTextSignature& text) const;

private:
    using Signatures = std::vector<CTextSignature>;
    /// Name and tags of an entry. Property values never change, so another thread may read one that it holds.
    struct Source {
        QString name;
        kiv::CPropertyValuePtr tags;
    };

    static std::vector<Source> sourcesOf(const CAppearanceEntries& entries);
    Signatures make(const std::vector<Source>& sources) const;

    std::atomic<bool> m_stopped{false};
    Signatures m_signatures;
    /// Last member: its destructor waits for the thread, which uses the ones above.
    std::future<Signatures> m_future;
};
