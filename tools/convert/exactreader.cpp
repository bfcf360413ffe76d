// Reads a trajectory as the viewer does, but with its numbers in double precision and with its comments.
#include "exactreader.h"

#include <string_view>
#include <utility>

#include <QString>

#include "linereading.h"
#include "recordlayout.h"
#include "sampleseries.h"
#include "trajectorylines.h"
#include "wordconversion.h"

namespace sorvane {
namespace {
constexpr int kHeaderLines = 12;

// The words of a line one after the other. Those that are no numbers count as 0.
class ExactWords {
public:
    ExactWords(const QString& simplifiedLine, std::int64_t& badNumbers)
        : line_(simplifiedLine), badNumbers_(&badNumbers) {}

    bool atEnd() const { return line_.isEmpty(); }
    void skip() { next(); }
    QStringView next() {
        const qsizetype blank = line_.indexOf(u' ');
        const QStringView word = blank < 0 ? line_ : line_.first(blank);
        line_ = blank < 0 ? QStringView() : line_.sliced(blank + 1);
        return word;
    }
    int nextInt() { return counted(toInt(next())); }
    double nextDouble() { return counted(toDouble(next())); }
    double nextReal() { return nextDouble(); }

private:
    template <class Number> Number counted(std::optional<Number> number) {
        *badNumbers_ += number ? 0 : 1;
        return number.value_or(Number{});
    }

    QStringView line_;
    std::int64_t* badNumbers_;
};

class ExactReader {
public:
    ExactReader(QIODevice* device, bool isProcess) : lines_(device, isProcess) {}

    ExactTrajectory read() {
        for (int i = 0; i < kHeaderLines && next(); ++i)
            read_.header += std::exchange(comments_, {}) + asWritten() + '\n';
        while (next() && !text_.isEmpty())
            readRecord();
        if (!text_.isNull())
            countLinesNotRead();
        read_.lastComments = std::move(comments_);
        orderByTime(read_.samples);
        return std::move(read_);
    }

private:
    // Goes to the next logical line; at the end of the data it is null.
    bool next() {
        while (lines_.next(line_)) {
            ++number_;
            text_ = simplifiedText({line_.data(), static_cast<qsizetype>(line_.size())});
            if (!text_.isNull())
                return true;
            comments_ += asWritten() + '\n';
        }
        text_ = QString();
        return false;
    }

    // The bytes that count, without the carriage returns at the end: if only one were taken off, a line that has
    // several would lose one each time that the file is written.
    std::string asWritten() const {
        std::string_view bytes = line_.substr(0, line_.find('\0'));
        while (bytes.ends_with('\r'))
            bytes.remove_suffix(1);
        return std::string(bytes);
    }

    // Reads the line by `use`, unless the data have ended.
    template <class Use> void readLine(Use use) {
        if (text_.isNull()) {
            read_.isTruncated = true;
            return;
        }
        const std::int64_t before = read_.badNumbers;
        use(ExactWords(text_, read_.badNumbers));
        if (before == 0 && read_.badNumbers > 0)
            read_.firstBadLine = number_;
    }

    void readRecord() {
        ExactSample& sample = read_.samples.emplace_back();
        readLine([&](const ExactWords& words) { readTargetLine(words, sample); });
        next();
        readLine([&](const ExactWords& words) { readThreatLine(words, sample); });
        next();
        readLine([&](ExactWords words) {
            const std::string first = words.next().toString().toStdString();
            const std::string second = words.next().toString().toStdString();
            // At the line's start a "#" would begin a comment, and a mark of the byte order would vanish.
            const bool isPlain = first[0] > 0 && first[0] != '#';
            if (!second.empty())
                sample.ignoredWords = (isPlain ? "" : " ") + first + " " + second;
            readTriple(words, sample.gyro);
        });
        // The count is what the file claims: nothing is allocated by it.
        for (int i = 0; i < sample.flareCount && !read_.isTruncated; ++i) {
            next();
            readLine([&](const ExactWords& words) { sample.flares.push_back(readFlareLine(words)); });
        }
        sample.comments = std::exchange(comments_, {});
    }

    void countLinesNotRead() {
        while (next())
            read_.linesNotRead += text_.isEmpty() ? 0 : 1;
    }

    TrajectoryLines lines_;
    std::string_view line_;
    QString text_;
    std::int64_t number_ = 0;
    std::string comments_; // since the last record
    ExactTrajectory read_;
};
} // namespace

ExactTrajectory readExactly(QIODevice* device, bool isProcess) {
    return ExactReader(device, isProcess).read();
}
} // namespace sorvane
