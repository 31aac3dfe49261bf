#include "TextPostings.h"

#include <algorithm>

namespace {

/// Lists longer than one position in this many are kept as bits.
constexpr std::size_t ListShare = 32;

// Most texts here are ASCII and Chinese, whose characters need no look into the tables.
ushort foldedCharacter(ushort c)
{
    if (c < 0x80)
        return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
    return c >= 0x2e80 && c < 0xa640 ? c : QChar(c).toCaseFolded().unicode();
}

QString folded(QString text)
{
    for (QChar& c : text)
        c = QChar(foldedCharacter(c.unicode()));
    return text;
}

std::u16string_view viewOf(const QString& text)
{
    return {reinterpret_cast<const char16_t*>(text.utf16()), std::size_t(text.size())};
}

}  // namespace

CPositionSet::CPositionSet(std::size_t count, bool full) : m_bits((count + 63) / 64, full ? ~quint64(0) : 0)
{
}

bool CPositionSet::IsEmpty() const
{
    return std::all_of(m_bits.begin(), m_bits.end(), [](quint64 bits) { return bits == 0; });
}

void CPositionSet::IntersectWith(const CPositionSet& other)
{
    for (std::size_t i = 0; i < m_bits.size(); ++i)
        m_bits[i] &= other.m_bits[i];
}

// Halves of a surrogate pair are not folded by themselves, so they say nothing about a text that differs in case.
template <typename Visitor>
void CTextPostings::forEachKey(std::u16string_view text, const Visitor& visit)
{
    quint32 previous = 0;
    for (const char16_t c : text) {
        const quint32 current = QChar::isSurrogate(c) ? 0 : c;
        if (current)
            visit(current);
        if (current && previous)
            visit(previous << 16 | current);
        previous = current;
    }
}

quint32 CTextPostings::postingOf(quint32 key)
{
    const auto [found, isNew] = m_keys.try_emplace(key, quint32(m_postings.size()));
    if (isNew)
        m_postings.emplace_back();
    return found->second;
}

// Tags use the same words again and again, so what a word has is found out once. It is taken with the blanks around it,
// which it may lack at either end of a text.
CTextPostings::Word& CTextPostings::wordOf(std::u16string_view text)
{
    const auto known = m_words.find(text);
    if (known != m_words.end())
        return known->second;
    Word& word = m_words[m_wordTexts.emplace_back(text)];
    std::vector<quint32>& postings = word.postings;
    forEachKey(u' ' + m_wordTexts.back() + u' ', [&](quint32 key) { postings.push_back(postingOf(key)); });
    std::sort(postings.begin(), postings.end());
    postings.erase(std::unique(postings.begin(), postings.end()), postings.end());
    return word;
}

void CTextPostings::Add(std::size_t position, const QString& text)
{
    const QString lower = folded(text);
    std::u16string_view rest = viewOf(lower);
    while (true) {
        const std::size_t blank = rest.find(u' ');
        Word& word = wordOf(rest.substr(0, blank));
        if (word.lastPosition != position) {
            for (const quint32 posting : word.postings)
                insert(m_postings[posting], quint32(position));
        }
        word.lastPosition = position;
        if (blank == std::u16string_view::npos)
            return;
        rest.remove_prefix(blank + 1);
    }
}

void CTextPostings::insert(Posting& posting, quint32 position) const
{
    if (!posting.set.empty()) {
        posting.set.front().Insert(position);
        return;
    }
    if (posting.list.empty() || posting.list.back() != position)
        posting.list.push_back(position);
    if (posting.list.size() > m_count / ListShare) {
        posting.set.push_back(positionsOf(posting));
        posting.list = {};
    }
}

void CTextPostings::Finish()
{
    m_words = {};
    m_wordTexts = {};
}

CPositionSet CTextPostings::positionsOf(const Posting& posting) const
{
    if (!posting.set.empty())
        return posting.set.front();
    CPositionSet positions(m_count);
    for (const quint32 position : posting.list)
        positions.Insert(position);
    return positions;
}

CPositionSet CTextPostings::Find(const QString& text) const
{
    CPositionSet positions(m_count, true);
    const QString lower = folded(text);
    forEachKey(viewOf(lower), [&](quint32 key) {
        const auto found = m_keys.find(key);
        positions.IntersectWith(found == m_keys.end() ? CPositionSet(m_count) : positionsOf(m_postings[found->second]));
    });
    return positions;
}
