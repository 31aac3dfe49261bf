#pragma once

#include "AppearanceEntry.h"
#include "TextPostings.h"

#include <atomic>
#include <future>
#include <optional>

/// Lets a keyword be searched in the names and tags of a large library within a frame, although the tags alone may be
/// 50 megabytes: it knows which entries have the characters of the keyword, and its pairs of neighbours. Made on a
/// thread of its own after the library is shown. User-interface thread.
class CSearchIndex {
public:
    CSearchIndex() = default;
    ~CSearchIndex();
    CSearchIndex(const CSearchIndex&) = delete;
    CSearchIndex& operator=(const CSearchIndex&) = delete;

    /// Starts to make the index and numbers the entries, once. A small library gets none: it is looked through as fast.
    void Build(const CAppearanceEntries& entries);
    /// The entry is new, or its texts changed: it may contain anything from now on.
    void Exclude(CAppearanceEntry& entry);

    /// Sets the text that is asked for; waits for the index.
    void Prepare(const QString& text);
    /// False only when neither name nor tags of the entry contain the text.
    bool MayContain(const CAppearanceEntry& entry) const;
    /// True only when no entry contains the text.
    bool IsHopeless() const;

private:
    /// Name and tags of an entry. Property values never change, so another thread may read one that it holds.
    struct Source {
        QString name;
        kiv::CPropertyValuePtr tags;
    };

    static std::vector<Source> sourcesOf(const CAppearanceEntries& entries);
    CTextPostings make(const std::vector<Source>& sources) const;
    void finish();

    std::atomic<bool> m_stopped{false};
    CTextPostings m_postings;
    std::optional<CPositionSet> m_candidates;  ///< nothing when all entries are
    bool m_isBuilt = false;
    bool m_hasExcluded = false;
    /// Last member: its destructor waits for the thread, which uses the ones above.
    std::future<CTextPostings> m_future;
};
