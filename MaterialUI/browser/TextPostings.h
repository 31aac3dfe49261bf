#pragma once

#include <QString>

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// A set of positions below a fixed count, one bit each.
class CPositionSet {
public:
    explicit CPositionSet(std::size_t count, bool full = false);

    void Insert(std::size_t position) { m_bits[position / 64] |= quint64(1) << (position % 64); }
    bool Contains(std::size_t position) const { return m_bits[position / 64] >> (position % 64) & 1; }
    bool IsEmpty() const;
    void IntersectWith(const CPositionSet& other);

private:
    std::vector<quint64> m_bits;
};

/// Which of many texts have which characters and which pairs of neighbouring characters, ignoring case. Any one thread.
class CTextPostings {
public:
    explicit CTextPostings(std::size_t count = 0) : m_count(count) {}

    std::size_t Count() const { return m_count; }

    /// Adds a text to what is known of the position. Positions are added in ascending order.
    void Add(std::size_t position, const QString& text);
    /// Frees what only adding needs.
    void Finish();

    /// The positions whose texts may contain the text; all others do not.
    CPositionSet Find(const QString& text) const;

private:
    /// Few positions as a list, many as bits.
    struct Posting {
        std::vector<quint32> list;
        std::vector<CPositionSet> set;
    };
    /// A word as it was met first: what it adds, and the position that it was added to last.
    struct Word {
        std::vector<quint32> postings;
        std::size_t lastPosition = std::size_t(-1);
    };

    template <typename Visitor>
    static void forEachKey(std::u16string_view text, const Visitor& visit);
    Word& wordOf(std::u16string_view text);
    quint32 postingOf(quint32 key);
    void insert(Posting& posting, quint32 position) const;
    CPositionSet positionsOf(const Posting& posting) const;

    std::size_t m_count;
    std::unordered_map<quint32, quint32> m_keys;
    std::vector<Posting> m_postings;
    std::unordered_map<std::u16string_view, Word> m_words;  ///< views into the next
    std::deque<std::u16string> m_wordTexts;
};
