// A plain reader of trajectory files, written for the tests alone.
#pragma once

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "vec3.h"

using Numbers = std::vector<double>;

struct ReadSample {
    Numbers head; // time, flares, target position, target attitude
    Numbers threat;
    Numbers seeker;
    std::map<int, Numbers> flares; // by id: the thirteen words of the line

    double time() const { return head.at(0); }
    // Three numbers from `first` on.
    static sorvane::Vec3d three(const Numbers& numbers, std::size_t first) {
        return {numbers.at(first), numbers.at(first + 1), numbers.at(first + 2)};
    }
    sorvane::Vec3d targetPosition() const { return three(head, 2); }
    sorvane::Vec3d targetAttitude() const { return three(head, 5); }
    sorvane::Vec3d threatPosition() const { return three(threat, 0); }
    sorvane::Vec3d threatAttitude() const { return three(threat, 3); }
    sorvane::Vec3d gyro() const { return three(seeker, 2); }
};

struct ReadTrajectory {
    std::vector<std::string> header;
    std::vector<ReadSample> samples;
    int comments = 0;

    explicit ReadTrajectory(const std::string& text) : lines_(text) {
        for (int i = 0; i < 12; ++i)
            header.push_back(line());
        for (std::string head = line(); !head.empty(); head = line()) {
            ReadSample sample{numbers(head), numbers(line()), numbers(line()), {}};
            for (int i = 0; i < static_cast<int>(sample.head.at(1)); ++i) {
                const Numbers flare = numbers(line());
                sample.flares[static_cast<int>(flare.at(0))] = flare;
            }
            samples.push_back(sample);
        }
    }

private:
    std::string line() {
        std::string result;
        while (std::getline(lines_, result) && result.starts_with("#"))
            ++comments;
        return lines_ ? result : std::string();
    }
    static Numbers numbers(const std::string& line) {
        std::istringstream stream(line);
        Numbers result;
        for (double number = 0.0; stream >> number;)
            result.push_back(number);
        return result;
    }

    std::istringstream lines_;
};
