// The pictures the art bake ships: each one a TGA the game's own loader takes,
// and each fit for its use: tiles without seams, particles that fade out at
// their rims, complete animation sets and fonts of 16 by 16 cells.
// The sounds the sound bake ships: wave files the game's loader takes, heard
// (not silent), and loops that wrap without a click; the music and the intro
// the media bake ships: files the FFmpeg libraries open and decode whole, of
// the length and size the game expects. tests/tools holds the tests of the
// bakes themselves; the configuration test checks that every named file exists.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include "support/content_support.h"

namespace {

TgaPicture bakedPicture(const std::string& name) {
    return readTga(readBytes(bakedDataFolder() / name));
}

// Mean colour difference across the line between column at and at + 1
// (wrapping), or between row at and at + 1.
double step(const TgaPicture& p, int at, bool rows) {
    const int length = rows ? p.width : p.height, next = (at + 1) % (rows ? p.height : p.width);
    double sum = 0.0;
    for (int i = 0; i < length; ++i)
        for (int c = 0; c < 3; ++c)
            sum += std::abs(rows ? p.pixel(i, at)[c] - p.pixel(i, next)[c]
                                 : p.pixel(at, i)[c] - p.pixel(next, i)[c]);
    return sum / length;
}

// A seam is an edge step well above the picture's usual step between neighbours.
void expectTilesWithoutSeam(const TgaPicture& p, const std::string& name) {
    for (const bool rows : {false, true}) {
        const int size = rows ? p.height : p.width;
        double usual = 0.0;
        for (int at = 0; at < size - 1; ++at) usual += step(p, at, rows) / (size - 1);
        EXPECT_LT(step(p, size - 1, rows), usual * 2.5 + 4.0)
            << name << " shows a seam " << (rows ? "top to bottom" : "left to right");
    }
}

const char* surfaces[] = {"gfx/surfaces/metal.tga", "gfx/surfaces/wood.tga", "gfx/surfaces/stone.tga",
                          "gfx/surfaces/cloth.tga", "gfx/surfaces/sand.tga", "gfx/decor/grass.tga",
                          "gfx/decor/ice.tga",      "gfx/decor/rock.tga",    "gfx/decor/earth.tga"};

}  // namespace

TEST(BakedArt, EveryPictureIsATgaTheGameLoaderAccepts) {
    const std::vector<std::string> names = listFiles(bakedDataFolder() / "gfx");
    EXPECT_GT(names.size(), 40u);
    for (const std::string& name : names)
        EXPECT_TRUE(bakedPicture("gfx/" + name).ok()) << name << " " << bakedPicture("gfx/" + name).error;
}

TEST(BakedArt, SurfacesAreOpaqueAndTileWithoutSeams) {
    for (const char* name : surfaces) {
        const TgaPicture p = bakedPicture(name);
        ASSERT_TRUE(p.ok()) << name << " " << p.error;
        EXPECT_EQ(p.width, p.height) << name;
        bool opaque = true;
        for (int y = 0; y < p.height; ++y)
            for (int x = 0; x < p.width; ++x) opaque = opaque && p.alpha(x, y) == 255;
        EXPECT_TRUE(opaque) << name;
        expectTilesWithoutSeam(p, name);
    }
}

TEST(BakedArt, ParticlesFadeToNothingAtTheirCornersAndShowInTheMiddle) {
    for (const char* name :
         {"gfx/particles/water.tga", "gfx/particles/steam.tga", "gfx/particles/ice.tga", "gfx/fx/spark.tga",
          "gfx/fx/smoke.tga", "gfx/fx/drop.tga", "gfx/fx/bubble.tga"}) {
        const TgaPicture p = bakedPicture(name);
        ASSERT_TRUE(p.ok()) << name << " " << p.error;
        for (const auto& corner : {std::pair{0, 0}, std::pair{p.width - 1, 0}, std::pair{0, p.height - 1},
                                   std::pair{p.width - 1, p.height - 1}})
            EXPECT_EQ(p.alpha(corner.first, corner.second), 0) << name;
        int visible = 0;
        for (int y = 0; y < p.height; ++y)
            for (int x = 0; x < p.width; ++x) visible += p.alpha(x, y) > 64;
        EXPECT_GT(visible, p.width * p.height / 20) << name << " is nearly invisible";
    }
}

TEST(BakedArt, AnimationSetsAreNumberedFromOneWithoutGapsAndShareOneSize) {
    std::map<std::string, std::vector<std::string>> sets;
    for (const std::string& name : listFiles(bakedDataFolder() / "gfx")) {
        const size_t mark = name.rfind("_FRAME");
        if (mark != std::string::npos) sets[name.substr(0, mark)].push_back(name.substr(mark + 6));
    }
    EXPECT_GE(sets.size(), 6u);
    for (const auto& [stem, numbers] : sets) {
        ASSERT_GE(numbers.size(), 2u) << stem;
        const TgaPicture first = bakedPicture("gfx/" + stem + "_FRAME" + numbers.front());
        for (size_t i = 0; i < numbers.size(); ++i) {
            EXPECT_EQ(std::atoi(numbers[i].c_str()), static_cast<int>(i) + 1)
                << stem << " frame " << numbers[i];
            const TgaPicture frame = bakedPicture("gfx/" + stem + "_FRAME" + numbers[i]);
            EXPECT_EQ(frame.width, first.width) << stem;
            EXPECT_EQ(frame.height, first.height) << stem;
        }
        EXPECT_NE(readBytes(bakedDataFolder() / "gfx" / (stem + "_FRAME" + numbers[0])),
                  readBytes(bakedDataFolder() / "gfx" / (stem + "_FRAME" + numbers[1])))
            << stem << " does not move";
    }
}

TEST(BakedArt, FontsAreSixteenBySixteenCellsWithTheLettersInPlace) {
    for (const char* name : {"gfx/fonts/console.tga", "gfx/fonts/menu.tga", "gfx/fonts/label.tga"}) {
        const TgaPicture p = bakedPicture(name);
        ASSERT_TRUE(p.ok()) << name << " " << p.error;
        ASSERT_EQ(p.width, p.height) << name;
        ASSERT_EQ(p.width % 16, 0) << name;
        const int cell = p.width / 16;
        auto inked = [&](int c) {
            int count = 0;
            for (int y = 0; y < cell; ++y)
                for (int x = 0; x < cell; ++x)
                    count += p.alpha((c & 15) * cell + x, (c >> 4) * cell + y) > 128;
            return count;
        };
        EXPECT_EQ(inked(0), 0) << name << ": control codes are empty";
        EXPECT_EQ(inked(' '), 0) << name;
        EXPECT_GT(inked('A'), cell * cell / 40) << name;
        EXPECT_GT(inked('W'), inked('.')) << name;
        EXPECT_GT(inked(0xE9), 0) << name << ": Latin-1 letters are drawn";
        EXPECT_EQ(p.pixel(5, 5)[0], 255) << name << ": glyphs are white, tinted when drawn";
    }
}

TEST(BakedArt, CursorTipIsAtTheTopLeft) {
    const TgaPicture p = bakedPicture("gfx/cursor.tga");
    ASSERT_TRUE(p.ok()) << p.error;
    EXPECT_GT(p.alpha(1, 2), 128);
    EXPECT_EQ(p.alpha(p.width - 1, p.height - 1), 0);
    EXPECT_EQ(p.alpha(p.width - 1, 0), 0);
}

namespace {

uint32_t read32(const std::string& b, size_t at) {
    uint32_t v = 0;
    for (int i = 3; i >= 0; --i) v = (v << 8) | static_cast<uint8_t>(b[at + i]);
    return v;
}

uint16_t read16(const std::string& b, size_t at) {
    return static_cast<uint16_t>(static_cast<uint8_t>(b[at]) | (static_cast<uint8_t>(b[at + 1]) << 8));
}

// The samples of a 16-bit mono wave as the game's loader would accept it; empty if refused.
std::vector<int16_t> acceptedSamples(const std::string& b) {
    if (b.size() < 44 || b.compare(0, 4, "RIFF") || b.compare(8, 4, "WAVE") || b.compare(12, 4, "fmt "))
        return {};
    if (read16(b, 20) != 1 || read16(b, 22) != 1 || read32(b, 24) == 0 || read16(b, 34) != 16) return {};
    size_t at = 20 + read32(b, 16);
    while (at + 8 <= b.size()) {
        const uint32_t size = read32(b, at + 4);
        if (b.compare(at, 4, "data") == 0) {
            if (size == 0 || at + 8 + size > b.size()) return {};
            std::vector<int16_t> samples(size / 2);
            std::memcpy(samples.data(), b.data() + at + 8, samples.size() * 2);
            return samples;
        }
        at += 8 + size;
    }
    return {};
}

double rms(const std::vector<int16_t>& samples) {
    double sum = 0.0;
    for (int16_t s : samples) sum += static_cast<double>(s) * s;
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

}  // namespace

TEST(BakedSound, EverySoundIsAWaveTheGameLoaderAcceptsAndIsHeard) {
    const std::vector<std::string> names = bakedSounds();
    EXPECT_GE(names.size(), 30u);
    for (const std::string& name : names) {
        const std::vector<int16_t> samples = acceptedSamples(readBytes(bakedDataFolder() / name));
        ASSERT_FALSE(samples.empty()) << name << " would be refused";
        EXPECT_GT(rms(samples), 300.0) << name << " is silent";
        int clipped = 0;
        for (int16_t s : samples) clipped += s == 32767 || s == -32767;
        EXPECT_LT(clipped, 4) << name << " clips";
    }
}

TEST(BakedSound, LoopsWrapWithoutAClick) {
    for (const char* name : {"snd/water/ambient.wav", "snd/ice/freeze.wav", "snd/ice/friction.wav",
                             "snd/steam/evaporate.wav", "snd/steam/ambient.wav", "snd/mill.wav"}) {
        const std::vector<int16_t> s = acceptedSamples(readBytes(bakedDataFolder() / name));
        ASSERT_GT(s.size(), 1000u) << name;
        double typicalStep = 0.0;
        for (size_t i = 1; i < s.size(); ++i) typicalStep += std::abs(s[i] - s[i - 1]);
        typicalStep /= static_cast<double>(s.size() - 1);
        EXPECT_LT(std::abs(s.front() - s.back()), typicalStep * 6 + 200) << name;
    }
}

namespace {

struct Decoded {
    std::string codec;
    int width = 0;
    int height = 0;
    int frames = 0;
    int64_t samples = 0;
    bool ok = false;
};

// Decodes the first stream of a file to its end.
Decoded decodeAll(const std::string& path) {
    Decoded result;
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, path.c_str(), nullptr, nullptr) < 0) return result;
    AVCodecContext* codec = nullptr;
    AVPacket* packet = av_packet_alloc();
    AVFrame* frame = av_frame_alloc();
    if (avformat_find_stream_info(format, nullptr) >= 0 && format->nb_streams > 0) {
        const AVCodecParameters* parameters = format->streams[0]->codecpar;
        const AVCodec* decoder = avcodec_find_decoder(parameters->codec_id);
        codec = decoder ? avcodec_alloc_context3(decoder) : nullptr;
        if (codec && avcodec_parameters_to_context(codec, parameters) >= 0 &&
            avcodec_open2(codec, decoder, nullptr) >= 0) {
            result.codec = decoder->name;
            result.ok = true;
            auto drain = [&] {
                while (avcodec_receive_frame(codec, frame) >= 0) {
                    ++result.frames;
                    result.samples += frame->nb_samples;
                    result.width = frame->width;
                    result.height = frame->height;
                }
            };
            while (av_read_frame(format, packet) >= 0) {
                if (packet->stream_index == 0 && avcodec_send_packet(codec, packet) < 0) result.ok = false;
                av_packet_unref(packet);
                drain();
            }
            avcodec_send_packet(codec, nullptr);
            drain();
        }
    }
    av_frame_free(&frame);
    av_packet_free(&packet);
    avcodec_free_context(&codec);
    avformat_close_input(&format);
    return result;
}

}  // namespace

TEST(BakedMedia, TheLevelMusicIsALongVorbisLoop) {
    const Decoded music = decodeAll((bakedDataFolder() / "snd" / "music" / "brookfall.ogg").string());
    ASSERT_TRUE(music.ok);
    EXPECT_EQ(music.codec, "vorbis");
    EXPECT_GT(music.samples, 44100 * 30) << "a loop shorter than half a minute tires quickly";
}

TEST(BakedMedia, TheIntroIsAFiveSecondVideoWithItsSoundTrack) {
    const Decoded video = decodeAll((bakedDataFolder() / "vid" / "intro.avi").string());
    ASSERT_TRUE(video.ok);
    EXPECT_EQ(video.codec, "mjpeg");
    EXPECT_EQ(video.frames, 125);
    EXPECT_EQ(video.width, 640);
    EXPECT_EQ(video.height, 480);
    const Decoded sound = decodeAll((bakedDataFolder() / "vid" / "intro.ogg").string());
    ASSERT_TRUE(sound.ok);
    EXPECT_NEAR(static_cast<double>(sound.samples) / 44100.0, 5.0, 0.5)
        << "the sound track runs as long as the video";
}
