// VideoBackend on FFmpeg. A reader decodes forward only: a frame further on is
// reached by decoding the ones between, and an earlier one by going back to
// the start. The game asks for frames in order, and for frame 0 again at a
// rewind, which the reader still holds right after it was opened.
extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libswscale/swscale.h>
}

#include <vector>

#include "foundation/single_instance.h"
#include "platform/platform.h"
#include "platform/video_backend.h"

namespace VideoBackend {

struct Stream {
    AVFormatContext* format = nullptr;
    int index = -1;
    int width = 0;
    int height = 0;
    int64_t frames = 0;
    AVRational rate{0, 1};  // frames per second
};

struct FrameReader {
    Stream* stream = nullptr;
    AVCodecContext* codec = nullptr;
    SwsContext* scale = nullptr;
    AVPacket* packet = nullptr;
    AVFrame* frame = nullptr;
    std::vector<uint8_t> pixels;
    uint32_t next = 0;      // the index of the next frame the decoder gives
    int64_t held = -1;      // the frame whose picture is in pixels
    bool draining = false;  // the file is read to its end
};

namespace {

struct State {
    int users = 0;
    int savedLogLevel = AV_LOG_INFO;
};

State& state() {
    return singleInstance<State>();
}

// No texture holds more on a side, and a broken header may claim anything.
constexpr int largestSide = 16384;

// The first video stream, leaving out cover pictures, which are no video.
int firstVideoStream(const AVFormatContext* format) {
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        const AVStream* stream = format->streams[i];
        if (stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
            !(stream->disposition & AV_DISPOSITION_ATTACHED_PIC))
            return static_cast<int>(i);
    }
    return -1;
}

// For containers that don't state their length: the stream's packets, read
// through a second opening of the file so that the first stays at the start.
int64_t countPackets(const std::string& path, int index) {
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, path.c_str(), nullptr, nullptr) < 0) return 0;
    int64_t count = 0;
    AVPacket* packet = av_packet_alloc();
    while (packet && av_read_frame(format, packet) >= 0) {
        if (packet->stream_index == index) ++count;
        av_packet_unref(packet);
    }
    av_packet_free(&packet);
    avformat_close_input(&format);
    return count;
}

bool seekToStart(FrameReader& reader) {
    const AVStream* stream = reader.stream->format->streams[reader.stream->index];
    const int64_t start = stream->start_time == AV_NOPTS_VALUE ? 0 : stream->start_time;
    if (av_seek_frame(reader.stream->format, reader.stream->index, start, AVSEEK_FLAG_BACKWARD) < 0)
        return false;
    avcodec_flush_buffers(reader.codec);
    reader.next = 0;
    reader.draining = false;
    return true;
}

// The decoder's next picture into reader.frame; false at the end or on a fault.
bool decodeNext(FrameReader& reader) {
    for (;;) {
        const int received = avcodec_receive_frame(reader.codec, reader.frame);
        if (received >= 0) {
            ++reader.next;
            return true;
        }
        if (received != AVERROR(EAGAIN) || reader.draining) return false;
        if (av_read_frame(reader.stream->format, reader.packet) < 0) {
            reader.draining = true;
            avcodec_send_packet(reader.codec, nullptr);
            continue;
        }
        if (reader.packet->stream_index != reader.stream->index) {
            av_packet_unref(reader.packet);
            continue;
        }
        const int sent = avcodec_send_packet(reader.codec, reader.packet);
        av_packet_unref(reader.packet);
        if (sent < 0 && sent != AVERROR(EAGAIN)) return false;
    }
}

// Into the stream's size as blue, green, red, bottom row first: the rows are
// written from the end of the buffer upwards in the same pass.
bool convertFrame(FrameReader& reader) {
    const AVFrame* frame = reader.frame;
    const int width = reader.stream->width, height = reader.stream->height;
    if (frame->width < 1 || frame->height < 1 || frame->format < 0) return false;
    reader.scale = sws_getCachedContext(reader.scale, frame->width, frame->height,
                                        static_cast<AVPixelFormat>(frame->format), width, height,
                                        AV_PIX_FMT_BGR24, SWS_BILINEAR, nullptr, nullptr, nullptr);
    if (!reader.scale) return false;
    const int rowBytes = width * 3;
    uint8_t* const rows[4] = {reader.pixels.data() + static_cast<std::size_t>(height - 1) * rowBytes, nullptr,
                              nullptr, nullptr};
    const int strides[4] = {-rowBytes, 0, 0, 0};
    return sws_scale(reader.scale, frame->data, frame->linesize, 0, frame->height, rows, strides) == height;
}

}  // namespace

void startLibrary() {
    State& s = state();
    if (s.users++ == 0) {
        s.savedLogLevel = av_log_get_level();
        av_log_set_level(AV_LOG_QUIET);  // a broken file is the game's to report, once
    }
}

void stopLibrary() {
    State& s = state();
    if (s.users > 0 && --s.users == 0) av_log_set_level(s.savedLogLevel);
}

Stream* openStream(const std::string& gameName) {
    const std::string path = Platform::resolvePath(gameName);
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, path.c_str(), nullptr, nullptr) < 0) return nullptr;
    const int index = avformat_find_stream_info(format, nullptr) >= 0 ? firstVideoStream(format) : -1;
    AVStream* video = index >= 0 ? format->streams[index] : nullptr;
    if (!video || !avcodec_find_decoder(video->codecpar->codec_id) || video->codecpar->width > largestSide ||
        video->codecpar->height > largestSide) {
        avformat_close_input(&format);
        return nullptr;
    }
    auto* stream = new Stream;
    stream->format = format;
    stream->index = index;
    stream->width = video->codecpar->width;
    stream->height = video->codecpar->height;
    stream->frames = video->nb_frames > 0 ? video->nb_frames : countPackets(path, index);
    stream->rate = av_guess_frame_rate(format, video, nullptr);
    if (stream->rate.num <= 0 || stream->rate.den <= 0) stream->rate = av_inv_q(video->time_base);
    return stream;
}

void releaseStream(Stream* stream) {
    if (!stream) return;
    avformat_close_input(&stream->format);
    delete stream;
}

StreamInfo streamInfo(const Stream* stream) {
    StreamInfo info;
    info.frame.right = stream->width;
    info.frame.bottom = stream->height;
    return info;
}

int64_t streamLength(const Stream* stream) {
    return stream->frames;
}

int64_t sampleToTime(const Stream* stream, int64_t sample) {
    if (stream->rate.num <= 0 || stream->rate.den <= 0) return 0;
    return av_rescale(sample, 1000 * static_cast<int64_t>(stream->rate.den), stream->rate.num);
}

FrameReader* openFrameReader(Stream* stream) {
    if (!stream || stream->width < 1 || stream->height < 1) return nullptr;
    const AVCodecParameters* parameters = stream->format->streams[stream->index]->codecpar;
    const AVCodec* decoder = avcodec_find_decoder(parameters->codec_id);
    auto* reader = new FrameReader;
    reader->stream = stream;
    reader->codec = decoder ? avcodec_alloc_context3(decoder) : nullptr;
    reader->packet = av_packet_alloc();
    reader->frame = av_frame_alloc();
    bool opened = reader->codec && reader->packet && reader->frame &&
                  avcodec_parameters_to_context(reader->codec, parameters) >= 0;
    if (opened) {
        reader->codec->thread_count = 1;  // frames are wanted one at a time, in order
        opened = avcodec_open2(reader->codec, decoder, nullptr) >= 0;
    }
    if (!opened) {
        closeFrameReader(reader);
        return nullptr;
    }
    reader->pixels.resize(static_cast<std::size_t>(stream->width) * stream->height * 3);
    return reader;
}

void closeFrameReader(FrameReader* reader) {
    if (!reader) return;
    sws_freeContext(reader->scale);
    av_frame_free(&reader->frame);
    av_packet_free(&reader->packet);
    avcodec_free_context(&reader->codec);
    delete reader;
}

const uint8_t* getFrame(FrameReader* reader, uint32_t index) {
    if (!reader) return nullptr;
    if (reader->held == index) return reader->pixels.data();
    reader->held = -1;
    if (index < reader->next && !seekToStart(*reader)) return nullptr;
    while (reader->next <= index)
        if (!decodeNext(*reader)) return nullptr;
    if (!convertFrame(*reader)) return nullptr;
    reader->held = index;
    return reader->pixels.data();
}

}  // namespace VideoBackend
