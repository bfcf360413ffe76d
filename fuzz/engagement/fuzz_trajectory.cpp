// Fuzzes the trajectory reader: the header, then the records through the fast and the plain reader, which must agree
// bit for bit however the bytes arrive. The first byte says how many bytes a read gives.
#include <cstdint>
#include <cstdlib>

#include <QBuffer>

#include "devices.h"
#include "identical.h"
#include "trajectoryreader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const QByteArray text(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);

    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    readTrajectoryHeader(&buffer, false);
    const qint64 recordsAt = buffer.pos();
    const QMap<double, keyframe> plain = readRecordsLineByLine(&buffer, false);

    buffer.seek(recordsAt);
    if (!identical(readRecords(&buffer, false), plain))
        std::abort();

    TrickleDevice trickle(text, 1 + *data);
    readTrajectoryHeader(&trickle, false);
    if (!identical(readRecords(&trickle, false), plain))
        std::abort();
    return 0;
}
