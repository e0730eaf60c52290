#pragma once
// A picture of the screen as a baseline JPEG, in memory: a movie's frame.
#include <cstdint>
#include <vector>

// `pixels` are rows from the top, each pixel 0xAARRGGBB (alpha ignored). Full
// colour resolution (no chroma subsampling): the screen's thin coloured lines and
// text stay sharp.
std::vector<uint8_t> EncodeJpegFrame(const uint32_t* pixels, int width, int height, int quality);
