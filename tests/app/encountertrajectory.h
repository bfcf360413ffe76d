// A trajectory whose encounter can be worked out by hand.
#pragma once

#include "trajectorytext.h"

// Samples every second from 0 to 10: the target stands at (0, 0, −1000) with its nose along x; the threat passes it
// along x at 20 units a second, from −100 to 100, 10 units above it: nearest at 5 s. Flare 1 appears at 2 s, flare 2 at
// 4 s.
inline QList<TestSample> encounterSamples() {
    QList<TestSample> samples;
    for (int second = 0; second <= 10; ++second) {
        TestSample sample;
        sample.time = second;
        sample.threat[0] = -100.0 + 20.0 * second;
        sample.threat[2] = -1010.0;
        if (second >= 2)
            sample.flares << TestFlare{.id = 1};
        if (second >= 4)
            sample.flares << TestFlare{.id = 2};
        samples << sample;
    }
    return samples;
}
