#pragma once

#include <QString>

#include <cmath>
#include <cstddef>

/// Numbers that are the same on every machine: the standard library's distributions are not. SplitMix64 (Steele, Lea,
/// Flood 2014), one stream for each seed and index.
class Dice {
public:
    Dice(quint64 seed, quint64 index) : m_identity(mix((seed << 32) ^ index)), m_state(m_identity) {}

    int below(int limit) { return int(next() % quint64(limit)); }

    /// A multiple of 0.001 from min to max, so that documents look as if typed.
    double number(double min, double max) { return std::round((min + (max - min) * fraction()) * 1000) / 1000; }

    template <typename T, std::size_t N>
    const T& pick(const T (&items)[N])
    {
        return items[next() % N];
    }

    /// 32 lower-case hexadecimal digits. The first 16 differ for each index of a seed, since mixing is reversible.
    QString identifier() { return QString("%1%2").arg(m_identity, 16, 16, QChar('0')).arg(next(), 16, 16, QChar('0')); }

private:
    static quint64 mix(quint64 z)
    {
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }
    quint64 next() { return mix(m_state += 0x9e3779b97f4a7c15ULL); }
    double fraction() { return double(next() >> 11) * 0x1p-53; }

    quint64 m_identity;
    quint64 m_state;
};
