#include "SearchIndex.h"

#include <MaterialConstants.h>

#include <exception>

namespace {

constexpr std::size_t SmallLibrary = 2000;

}  // namespace

std::vector<CSearchIndex::Source> CSearchIndex::sourcesOf(const CAppearanceEntries& entries)
{
    std::vector<Source> sources;
    sources.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i]->SetIndexPosition(int(i));
        sources.push_back({entries[i]->Name(), entries[i]->Appearance()->FindProperty(APPEARANCE_TAGS)});
    }
    return sources;
}

CSearchIndex::~CSearchIndex()
{
    m_stopped = true;
}

CTextPostings CSearchIndex::make(const std::vector<Source>& sources) const
{
    CTextPostings postings(sources.size());
    for (std::size_t i = 0; i < sources.size() && !m_stopped; ++i) {
        postings.Add(i, sources[i].name);
        const kiv::String* tags = sources[i].tags ? sources[i].tags->TryGet<kiv::String>() : nullptr;
        if (tags)
            postings.Add(i, QString::fromLocal8Bit(tags->data(), int(tags->size())));
    }
    postings.Finish();
    return postings;
}

void CSearchIndex::Build(const CAppearanceEntries& entries)
{
    if (m_isBuilt || entries.size() < SmallLibrary)
        return;
    m_isBuilt = true;
    try {
        m_future = std::async(std::launch::async, [this, sources = sourcesOf(entries)] { return make(sources); });
    } catch (const std::exception&) {
        // No thread to be had: every entry is looked at.
    }
}

void CSearchIndex::Exclude(CAppearanceEntry& entry)
{
    entry.SetIndexPosition(-1);
    m_hasExcluded = true;
}

void CSearchIndex::finish()
{
    try {
        if (m_future.valid())
            m_postings = m_future.get();
    } catch (const std::exception&) {
        // No memory for it: every entry is looked at.
    }
}

void CSearchIndex::Prepare(const QString& text)
{
    m_candidates.reset();
    if (text.isEmpty())
        return;
    finish();
    if (m_postings.Count() > 0)
        m_candidates = m_postings.Find(text);
}

bool CSearchIndex::MayContain(const CAppearanceEntry& entry) const
{
    return !m_candidates || entry.IndexPosition() < 0 || m_candidates->Contains(std::size_t(entry.IndexPosition()));
}

bool CSearchIndex::IsHopeless() const
{
    return m_candidates && !m_hasExcluded && m_candidates->IsEmpty();
}
