#include "Canvas/CanvasRender.h"

CanvasRender::CanvasRender() {}
CanvasRender::~CanvasRender() {}
void CanvasRender::PreDraw() {}
void CanvasRender::DrawLayer(CanvasLayer*, float) {}
void CanvasRender::PostDraw() {}
