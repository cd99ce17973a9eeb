#include "encoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <filesystem>

namespace {

// Owns everything of one output file, and frees it whatever happens.
struct Output {
    AVFormatContext* format = nullptr;
    AVCodecContext* codec = nullptr;
    AVStream* stream = nullptr;
    AVFrame* frame = nullptr;
    AVPacket* packet = nullptr;

    ~Output() {
        av_packet_free(&packet);
        av_frame_free(&frame);
        avcodec_free_context(&codec);
        if (format) {
            if (format->pb) avio_closep(&format->pb);
            avformat_free_context(format);
        }
    }
};

bool fail(std::string& error, const std::string& message) {
    error = message;
    return false;
}

bool begin(Output& out, const std::string& path, const char* codecName, std::string& error) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    if (avformat_alloc_output_context2(&out.format, nullptr, nullptr, path.c_str()) < 0)
        return fail(error, "no container for " + path);
    out.format->flags |= AVFMT_FLAG_BITEXACT;
    const AVCodec* codec = avcodec_find_encoder_by_name(codecName);
    if (!codec) return fail(error, std::string("no encoder ") + codecName);
    out.codec = avcodec_alloc_context3(codec);
    out.stream = avformat_new_stream(out.format, nullptr);
    out.frame = av_frame_alloc();
    out.packet = av_packet_alloc();
    if (!out.codec || !out.stream || !out.frame || !out.packet) return fail(error, "out of memory");
    out.codec->flags |= AV_CODEC_FLAG_BITEXACT;
    if (out.format->oformat->flags & AVFMT_GLOBALHEADER) out.codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    return true;
}

bool open(Output& out, const std::string& path, std::string& error) {
    if (avcodec_open2(out.codec, out.codec->codec, nullptr) < 0)
        return fail(error, "cannot start the encoder");
    avcodec_parameters_from_context(out.stream->codecpar, out.codec);
    out.stream->time_base = out.codec->time_base;
    if (avio_open(&out.format->pb, path.c_str(), AVIO_FLAG_WRITE) < 0)
        return fail(error, "cannot write " + path);
    AVDictionary* options = nullptr;
    av_dict_set(&options, "serial_offset", "1", 0);
    const int written = avformat_write_header(out.format, &options);
    av_dict_free(&options);
    return written >= 0 || fail(error, "cannot write the header of " + path);
}

// Sends one frame (or null to flush) and writes every packet that comes out.
bool encode(Output& out, AVFrame* frame, std::string& error) {
    if (avcodec_send_frame(out.codec, frame) < 0) return fail(error, "the encoder refused a frame");
    while (true) {
        const int received = avcodec_receive_packet(out.codec, out.packet);
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) return true;
        if (received < 0) return fail(error, "the encoder failed");
        av_packet_rescale_ts(out.packet, out.codec->time_base, out.stream->time_base);
        out.packet->stream_index = out.stream->index;
        if (av_interleaved_write_frame(out.format, out.packet) < 0)
            return fail(error, "cannot write a packet");
    }
}

bool finish(Output& out, std::string& error) {
    return encode(out, nullptr, error) &&
           (av_write_trailer(out.format) >= 0 || fail(error, "cannot finish the file"));
}

bool encodeSamples(Output& out, const std::vector<float>& samples, std::string& error) {
    const int chunk = out.codec->frame_size > 0 ? out.codec->frame_size : 1024;
    out.frame->format = out.codec->sample_fmt;
    out.frame->sample_rate = audioRate;
    av_channel_layout_copy(&out.frame->ch_layout, &out.codec->ch_layout);
    for (size_t start = 0; start < samples.size(); start += chunk) {
        const int count = static_cast<int>(std::min<size_t>(chunk, samples.size() - start));
        out.frame->nb_samples = count;
        if (av_frame_get_buffer(out.frame, 0) < 0 || av_frame_make_writable(out.frame) < 0)
            return fail(error, "out of memory");
        float* plane = reinterpret_cast<float*>(out.frame->data[0]);
        for (int i = 0; i < count; ++i) plane[i] = samples[start + i];
        out.frame->pts = static_cast<int64_t>(start);
        if (!encode(out, out.frame, error)) return false;
        av_frame_unref(out.frame);
        out.frame->format = out.codec->sample_fmt;
        out.frame->sample_rate = audioRate;
        av_channel_layout_copy(&out.frame->ch_layout, &out.codec->ch_layout);
    }
    return true;
}

}  // namespace

bool writeOgg(const std::string& path, const std::vector<float>& samples, std::string& error) {
    Output out;
    if (!begin(out, path, "libvorbis", error)) return false;
    out.codec->sample_fmt = AV_SAMPLE_FMT_FLTP;
    out.codec->sample_rate = audioRate;
    av_channel_layout_default(&out.codec->ch_layout, 1);
    out.codec->time_base = {1, audioRate};
    out.codec->global_quality = 5 * FF_QP2LAMBDA;
    out.codec->flags |= AV_CODEC_FLAG_QSCALE;
    return open(out, path, error) && encodeSamples(out, samples, error) && finish(out, error);
}

bool writeAvi(const std::string& path, int width, int height, int framesPerSecond, int frameCount,
              const FrameSource& source, std::string& error) {
    Output out;
    if (!begin(out, path, "mjpeg", error)) return false;
    out.codec->width = width;
    out.codec->height = height;
    out.codec->pix_fmt = AV_PIX_FMT_YUVJ420P;
    out.codec->time_base = {1, framesPerSecond};
    out.codec->framerate = {framesPerSecond, 1};
    out.codec->global_quality = 3 * FF_QP2LAMBDA;
    out.codec->flags |= AV_CODEC_FLAG_QSCALE;
    if (!open(out, path, error)) return false;
    SwsContext* convert =
        sws_getContext(width, height, AV_PIX_FMT_RGB24, width, height, AV_PIX_FMT_YUVJ420P,
                       SWS_BICUBIC | SWS_BITEXACT | SWS_ACCURATE_RND, nullptr, nullptr, nullptr);
    out.frame->format = AV_PIX_FMT_YUVJ420P;
    out.frame->width = width;
    out.frame->height = height;
    bool good = convert && av_frame_get_buffer(out.frame, 0) >= 0;
    for (int i = 0; good && i < frameCount; ++i) {
        const std::vector<uint8_t> rgb = source(i);
        const uint8_t* planes[1] = {rgb.data()};
        const int strides[1] = {width * 3};
        good = av_frame_make_writable(out.frame) >= 0;
        if (good) sws_scale(convert, planes, strides, 0, height, out.frame->data, out.frame->linesize);
        out.frame->pts = i;
        good = good && encode(out, out.frame, error);
    }
    sws_freeContext(convert);
    if (!good) return error.empty() ? fail(error, "cannot encode the video") : false;
    return finish(out, error);
}
