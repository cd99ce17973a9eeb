// The music and the intro the media bake ships: files the FFmpeg libraries
// open and decode whole, of the length and size the game expects.
// tests/tools holds the tests of the bake itself.
#include <gtest/gtest.h>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include "support/content_support.h"

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
