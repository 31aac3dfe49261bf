#include "SearchIndex.h"

#include <MaterialConstants.h>

#include <exception>

namespace {

constexpr std::size_t SmallLibrary = 2000;

CTextSignature signatureOf(const QString& name, const kiv::CPropertyValuePtr& tags)
{
    CTextSignature signature;
    signature.Add(name);
    const kiv::String* text = tags ? tags->TryGet<kiv::String>() : nullptr;
    if (text)
        signature.Add(QString::fromLocal8Bit(text->data(), int(text->size())));
    return signature;
}

// Multiplicative hashing: the upper bits of the product depend on all bits of the key.
unsigned bitOf(quint32 key)
{
    return (key * 2654435761U) >> 22;
}

}  // namespace

void CTextSignature::Add(const QString& text)
{
    const auto set = [this](quint32 key) { m_bits[bitOf(key) / 64] |= quint64(1) << (bitOf(key) % 64); };
    quint32 previous = 0;
    for (const QChar c : text) {
        // Halves of a pair are not folded by themselves, so they say nothing about a text that differs in case.
        const quint32 folded = c.isSurrogate() ? 0 : c.toCaseFolded().unicode();
        if (folded)
            set(folded);
        if (folded && previous)
            set(previous << 16 | folded);
        previous = folded;
    }
}

bool CTextSignature::Includes(const CTextSignature& other) const
{
    for (std::size_t i = 0; i < m_bits.size(); ++i) {
        if (other.m_bits[i] & ~m_bits[i])
            return false;
    }
    return true;
}

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

CSearchIndex::Signatures CSearchIndex::make(const std::vector<Source>& sources) const
{
    Signatures signatures;
    signatures.reserve(sources.size());
    for (const Source& source : sources) {
        if (m_stopped)
            break;
        signatures.push_back(signatureOf(source.name, source.tags));
    }
    return signatures;
}

void CSearchIndex::Build(const CAppearanceEntries& entries)
{
    if (entries.size() < SmallLibrary)
        return;
    try {
        m_future = std::async(std::launch::async, [this, sources = sourcesOf(entries)] { return make(sources); });
    } catch (const std::exception&) {
        // No thread to be had: every entry is looked at.
    }
}

void CSearchIndex::Finish()
{
    try {
        if (m_future.valid())
            m_signatures = m_future.get();
    } catch (const std::exception&) {
        m_signatures.clear();
    }
}

bool CSearchIndex::MayContain(const CAppearanceEntry& entry, const CTextSignature& text) const
{
    const auto position = std::size_t(entry.IndexPosition());
    return position >= m_signatures.size() || m_signatures[position].Includes(text);
}
