// Makes the two sounds of the program at build time: two soft bell notes, rising when a tunnel comes up and falling
// when it goes. Writes connect.wav and disconnect.wav (16 bit, mono, RIFF) into the folder given.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

static constexpr double kRate = 22050;        // samples a second
static constexpr double kLength = 0.9;        // seconds
static constexpr double kSecondNoteAt = 0.16; // seconds
static constexpr double kTau = 6.283185307179586;

/// A bell: the fundamental and two quiet overtones, each dying away faster than the one below. `t` is in seconds from
/// the stroke.
static double bell(double frequency, double t)
{
    if (t < 0) {
        return 0;
    }
    const double attack = 1 - std::exp(-t * 300);
    return attack * (std::sin(kTau * frequency * t) * std::exp(-t * 5) +
                     0.3 * std::sin(kTau * 2 * frequency * t) * std::exp(-t * 8) +
                     0.1 * std::sin(kTau * 3 * frequency * t) * std::exp(-t * 14));
}

static std::vector<int16_t> chime(double first, double second)
{
    std::vector<int16_t> samples(static_cast<size_t>(kRate * kLength));
    for (size_t i = 0; i < samples.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const double fadeOut = std::min(1.0, (kLength - t) * 20);
        const double value = 0.35 * fadeOut * (bell(first, t) + bell(second, t - kSecondNoteAt));
        samples[i] = static_cast<int16_t>(value * 32767 / 1.5);
    }
    return samples;
}

static void putLittleEndian(std::string &out, uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        out.push_back(static_cast<char>(value >> (8 * i)));
    }
}

static std::string wave(const std::vector<int16_t> &samples)
{
    const auto dataBytes = static_cast<uint32_t>(samples.size() * 2);
    const auto rate = static_cast<uint32_t>(kRate);
    std::string out = "RIFF";
    putLittleEndian(out, 36 + dataBytes, 4);
    out += "WAVEfmt ";
    putLittleEndian(out, 16, 4);       // size of the format chunk
    putLittleEndian(out, 1, 2);        // PCM
    putLittleEndian(out, 1, 2);        // channels
    putLittleEndian(out, rate, 4);     // samples a second
    putLittleEndian(out, rate * 2, 4); // bytes a second
    putLittleEndian(out, 2, 2);        // bytes a sample
    putLittleEndian(out, 16, 2);       // bits a sample
    out += "data";
    putLittleEndian(out, dataBytes, 4);
    for (const int16_t sample : samples) {
        putLittleEndian(out, static_cast<uint16_t>(sample), 2);
    }
    return out;
}

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fputs("usage: make_sounds FOLDER\n", stderr);
        return 1;
    }
    constexpr double low = 659.26;  // E5
    constexpr double high = 987.77; // B5
    const std::string folder = argv[1];
    std::ofstream up(folder + "/connect.wav", std::ios::binary);
    std::ofstream down(folder + "/disconnect.wav", std::ios::binary);
    up << wave(chime(low, high));
    down << wave(chime(high, low));
    up.close();
    down.close();
    return up && down ? 0 : 1;
}
