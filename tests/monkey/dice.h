// Chance that is the same each time.
#pragma once

#include <QList>
#include <QPoint>
#include <QRandomGenerator>
#include <QRect>

#include <initializer_list>
#include <iterator>

/// The dice of one step: what falls depends on the seed and on the number of the step, not on what was
/// done before.
class Dice
{
public:
    Dice(quint32 seed, quint32 step)
        : Dice({seed, step})
    { }

    /// From 0 up to, and without, \a bound.
    int below(int bound) { return bound > 0 ? generator.bounded(bound) : 0; }
    bool oneIn(int chances) { return below(chances) == 0; }

    template <typename List> const auto &of(const List &list)
    {
        return *std::next(std::begin(list), below(int(std::size(list))));
    }

    QPoint pointIn(const QRect &rect)
    {
        const int x = rect.left() + below(rect.width());
        return {x, rect.top() + below(rect.height())};
    }

private:
    Dice(std::initializer_list<quint32> seeds)
        : generator(seeds.begin(), qsizetype(seeds.size()))
    { }

    QRandomGenerator generator;
};
