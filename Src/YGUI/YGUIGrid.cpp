#include "YGUI/YGUIGrid.h"

#include <assert.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <rapidxml.hpp>
#include <stdexcept>

#include "External/waf/wafexp.h"
#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIAnimeFrame.h"
#include "YGUI/YGUIAnimeSet.h"
#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIImage.h"
#include "YGUI/YGUIImageButton.h"
#include "YGUI/YGUILabel.h"

namespace {

const char kTextureFolder[] = "res/UI/UITexture/";

// The attribute's text, or null when absent. Names are compared exactly.
const char* Attribute(YGUIGrid::XmlNode* node, const char* name) {
  rapidxml::xml_attribute<char>* attribute = node->first_attribute(name);
  return attribute ? attribute->value() : 0;
}

int IntAttribute(YGUIGrid::XmlNode* node, const char* name, int fallback) {
  const char* text = Attribute(node, name);
  return text ? atoi(text) : fallback;
}

std::string StringAttribute(YGUIGrid::XmlNode* node, const char* name) {
  const char* text = Attribute(node, name);
  return text ? std::string(text) : std::string();
}

// Read as a double, narrowed to single precision, then to 20.12.
int FixedAttribute(YGUIGrid::XmlNode* node, const char* name, int fallback) {
  const char* text = Attribute(node, name);
  if (!text) return fallback;
  const float value = (float)atof(text);
  return YGUIToFixed(value);
}

bool NameIs(YGUIGrid::XmlNode* node, const char* name) { return strcmp(node->name(), name) == 0; }

}  // namespace

YGUIGrid::YGUIGrid(YGUIEventObserver* observer)
    : mWidth(0),
      mHeight(0),
      mX(0),
      mY(0),
      mScaleX(4096),
      mScaleY(4096),
      mOriginalX(2048),
      mOriginalY(2048),
      mAnimation(0),
      mButtonUsable(1),
      mStylusUsable(1),
      mObserver(observer),
      mFocusControl(0),
      mDefaultFocusId(0),
      mHandledControl(0),
      mLoseFocusOnMiss(0),
      mFocusAnimeEnabled(1),
      mForceRedraw(0) {}

void YGUIGrid::Destroy() {
  if (mAnimation) {
    mAnimation->Destroy();
    delete mAnimation;
    mAnimation = 0;
  }
  for (size_t i = 0; i < mFrames.size(); ++i) {
    mFrames[i]->Destroy();
    delete mFrames[i];
  }
  mFrames.clear();
  mFocusControl = 0;
  mHandledControl = 0;
}

void YGUIGrid::Notify(ENotifyEventType type, void* data, void* control) {
  if (mObserver) mObserver->NotifyEventYGUI(type, data, control);
}

void YGUIGrid::LoadFromXml(const std::string& path) {
  FILE* file = fopen(path.c_str(), "rb");
  if (!file) throw std::runtime_error("cannot open file " + path);
  std::vector<char> text;
  char chunk[4096];
  size_t got;
  while ((got = fread(chunk, 1, sizeof(chunk), file)) > 0) text.insert(text.end(), chunk, chunk + got);
  fclose(file);
  LoadLayout(text);
}

void YGUIGrid::LoadFromXml(waf_file* file) {
  if (!file) throw std::runtime_error("cannot open file (no file of the archive)");
  const int size = waf_size(file);
  std::vector<char> text(size > 0 ? size_t(size) : 0);
  if (waf_read(file, text.data(), int(text.size())) != int(text.size())) {
    throw std::runtime_error(std::string("cannot read file ") + file->entry->name + " of the archive");
  }
  LoadLayout(text);
}

void YGUIGrid::LoadLayout(std::vector<char>& text) {
  text.push_back(0);

  // Parsed in place; every string a control keeps is copied out before the
  // buffer goes.
  rapidxml::xml_document<char> document;
  document.parse<0>(&text[0]);
  XmlNode* root = document.first_node();
  // An empty document lays nothing out.
  if (!root) return;

  mAnimation = CreateAnimationFromXml(root);
  mX = IntAttribute(root, "x", 0);
  mY = IntAttribute(root, "y", 0);
  mWidth = IntAttribute(root, "Width", 0);
  mHeight = IntAttribute(root, "Height", 0);

  for (XmlNode* child = root->first_node(); child; child = child->next_sibling()) {
    if (child->type() != rapidxml::node_element) continue;
    YGUIControl* control = 0;
    if (NameIs(child, "ImageButton")) {
      control = CreateImageButtonFromXml(child);
    } else if (NameIs(child, "Image")) {
      control = CreateImageFromXml(child);
    } else if (NameIs(child, "Label")) {
      control = CreateLabelFromXml(child);
    } else if (NameIs(child, "TextButton")) {
      control = CreateTextButtonFromXml(child);
    }
    if (control) {
      control->mAnimation = CreateAnimationFromXml(child);
      mFrames.push_back(control);
    }
  }
}

YGUIAnimation* YGUIGrid::CreateAnimationFromXml(XmlNode* node) {
  if (!node->first_node()) return 0;
  const int width = IntAttribute(node, "Width", 0);
  const int height = IntAttribute(node, "Height", 0);
  const int setCount = IntAttribute(node, "AnimSetNum", 0);
  if (setCount == 0) return 0;

  YGUIAnimation* AnimeTank = new YGUIAnimation(setCount);
  assert(AnimeTank);
  AnimeTank->Initialize();
  for (XmlNode* setNode = node->first_node(); setNode; setNode = setNode->next_sibling()) {
    if (setNode->type() != rapidxml::node_element || !NameIs(setNode, "AnimationSet")) continue;
    const int NumKeyFrame = IntAttribute(setNode, "KeyFrameNum", 0);
    assert(NumKeyFrame != 0);
    YGUIAnimeSet* NewAnimeSet = new YGUIAnimeSet(NumKeyFrame);
    assert(NewAnimeSet);
    NewAnimeSet->Initialize();
    NewAnimeSet->mName = StringAttribute(setNode, "Name");
    for (XmlNode* keyNode = setNode->first_node(); keyNode; keyNode = keyNode->next_sibling()) {
      if (keyNode->type() != rapidxml::node_element || !NameIs(keyNode, "KeyFrame")) continue;
      YGUIAnimeFrame* frame = new YGUIAnimeFrame();
      frame->mX = IntAttribute(keyNode, "x", 0);
      frame->mY = IntAttribute(keyNode, "y", 0);
      frame->mTime = FixedAttribute(keyNode, "Time", 0);
      frame->mAngle = FixedAttribute(keyNode, "Angle", 0);
      frame->mScaleX = FixedAttribute(keyNode, "ScaleX", 4096);
      frame->mScaleY = FixedAttribute(keyNode, "ScaleY", 4096);
      frame->mOpacity = FixedAttribute(keyNode, "Opacity", 4096);
      frame->mWidth = width;
      frame->mHeight = height;
      // A key beyond KeyFrameNum is dropped; it is freed rather than lost.
      if (!NewAnimeSet->AddKeyFrame(frame)) delete frame;
    }
    // Likewise a set beyond AnimSetNum.
    if (!AnimeTank->AddAnimeSet(NewAnimeSet)) {
      NewAnimeSet->Destroy();
      delete NewAnimeSet;
    }
  }
  return AnimeTank;
}

void YGUIGrid::ReadControlsCommonAtribute(YGUIControl* control, XmlNode* node) {
  control->mId = IntAttribute(node, "Id", -1);
  control->SetPosition(IntAttribute(node, "x", 0), IntAttribute(node, "y", 0));
  control->SetSize(IntAttribute(node, "Width", 0), IntAttribute(node, "Height", 0));
  control->mNavigate.mUp = IntAttribute(node, "NavUp", -1);
  control->mNavigate.mDown = IntAttribute(node, "NavDown", -1);
  control->mNavigate.mLeft = IntAttribute(node, "NavLeft", -1);
  control->mNavigate.mRight = IntAttribute(node, "NavRight", -1);
  control->mName = StringAttribute(node, "Name");
}

YGUIImageButton* YGUIGrid::CreateImageButtonFromXml(XmlNode* node) {
  YGUIImageButton* button = new YGUIImageButton(*this);
  button->Initialize();
  ReadControlsCommonAtribute(button, node);
  button->mFocusAnimation = StringAttribute(node, "FocusAnimation");
  button->mFocusOffAnimation = StringAttribute(node, "FocusOffAnimation");
  // The names don't say what they feed: Selected is the focus picture, Focus the
  // disabled one.
  const std::string normal = StringAttribute(node, "NormalBackground");
  const std::string selected = StringAttribute(node, "SelectedBackground");
  const std::string disabled = StringAttribute(node, "FocusBackground");
  if (!normal.empty()) button->SetNormalImage(normal, kTextureFolder);
  if (!selected.empty()) button->SetFocusImage(selected, kTextureFolder);
  if (!disabled.empty()) button->SetDisableImage(disabled, kTextureFolder);
  return button;
}

YGUIImage* YGUIGrid::CreateImageFromXml(XmlNode* node) {
  YGUIImage* image = new YGUIImage(*this);
  image->Initialize();
  ReadControlsCommonAtribute(image, node);
  const std::string normal = StringAttribute(node, "NormalBackground");
  if (!normal.empty()) image->SetImage(normal);
  const char* role = Attribute(node, "Role");
  if (role && role[0]) image->mRole = atoi(role);
  return image;
}

YGUILabel* YGUIGrid::CreateLabelFromXml(XmlNode* node) {
  YGUILabel* label = new YGUILabel(*this);
  label->Initialize();
  ReadControlsCommonAtribute(label, node);
  label->mContent = StringAttribute(node, "Content");
  return label;
}

YGUIControl* YGUIGrid::CreateTextButtonFromXml(XmlNode*) {
  // Known by name, not built.
  return 0;
}

void YGUIGrid::Set(int x, int y, const int& scaleX, const int& scaleY, const int& originalX, const int& originalY) {
  mX = x;
  mY = y;
  mScaleX = scaleX;
  mScaleY = scaleY;
  mOriginalX = originalX;
  mOriginalY = originalY;
  for (size_t i = 0; i < mFrames.size(); ++i) {
    YGUIControl* control = dynamic_cast<YGUIControl*>(mFrames[i]);
    if (control) control->SetRenderRect();
  }
}

void YGUIGrid::SetScale(const int& x, const int& y) {
  mScaleX = x;
  mScaleY = y;
  for (size_t i = 0; i < mFrames.size(); ++i) {
    YGUIControl* control = dynamic_cast<YGUIControl*>(mFrames[i]);
    if (control) control->SetRenderRect();
  }
}

void YGUIGrid::SetPosition(int x, int y) {
  mX = x;
  mY = y;
  for (size_t i = 0; i < mFrames.size(); ++i) {
    YGUIControl* control = dynamic_cast<YGUIControl*>(mFrames[i]);
    if (control) control->SetRenderRect();
  }
}

Math3D::vec2 YGUIGrid::GetAfterScalePoint(const Math3D::vec2& point) const {
  const int pivotX = mX + ((mWidth * mOriginalX + 2048) >> 12);
  const int pivotY = mY + ((mHeight * mOriginalY + 2048) >> 12);
  // The distance is taken from pivot to point, so a scaling grid mirrors points
  // through its pivot.
  Math3D::vec2 result;
  result.x = (float)(pivotX + ((((long long)(pivotX - point.x)) * mScaleX + 2048) >> 12));
  result.y = (float)(pivotY + ((((long long)(pivotY - point.y)) * mScaleY + 2048) >> 12));
  return result;
}

void YGUIGrid::EnableFuntion(EFunctionType type) {
  if (type == eFunction_LoseFocusOnMiss) mLoseFocusOnMiss = 1;
  if (type == eFunction_FocusAnime) mFocusAnimeEnabled = 1;
}

void YGUIGrid::DisableFuntion(EFunctionType type) {
  if (type == eFunction_LoseFocusOnMiss) mLoseFocusOnMiss = 0;
  if (type == eFunction_FocusAnime) mFocusAnimeEnabled = 0;
}

YGUIFrame* YGUIGrid::GetControl(int index) const {
  if (mFrames.empty()) return 0;
  if (index < 1) return mFrames[0];
  if (index >= (int)mFrames.size()) return 0;
  return mFrames[index];
}

YGUIControl* YGUIGrid::GetControlByName(const std::string& name) const {
  for (size_t i = 0; i < mFrames.size(); ++i) {
    YGUIControl* control = dynamic_cast<YGUIControl*>(mFrames[i]);
    if (control && control->mName == name) return control;
  }
  return 0;
}

void YGUIGrid::SetAnimeAble(int able) {
  for (size_t i = 0; i < mFrames.size(); ++i) mFrames[i]->mAnimeAble = able;
}

bool YGUIGrid::IsAnimationExist(std::string name) const {
  if (mAnimation && mAnimation->IsAnimationExist(name)) return true;
  for (size_t i = 0; i < mFrames.size(); ++i) {
    if (mFrames[i]->mAnimation && mFrames[i]->mAnimation->IsAnimationExist(name)) return true;
  }
  return false;
}

void YGUIGrid::StartAnime(const std::string& name) {
  if (mAnimation) mAnimation->PlayAnime(name);
  for (size_t i = 0; i < mFrames.size(); ++i) {
    if (mFrames[i]->mAnimeAble) mFrames[i]->PlayAnime(name);
    // One notice for each frame, none without frames.
    std::string started = name;
    Notify(eNotify_Message, &started, 0);
    mCurrentAnime = name;
  }
}

void YGUIGrid::PlayAnime(const std::string& name) { StartAnime(name); }

void YGUIGrid::StopCurAnimation() {
  for (size_t i = 0; i < mFrames.size(); ++i) mFrames[i]->StopAnime();
}

void YGUIGrid::RequestFocus(YGUIControl* control) {
  if (mFocusControl && mFocusControl == control) return;
  if (control && !control->mEnabled) return;
  if (mFocusControl) {
    YGUIControl* old = mFocusControl;
    old->MarkFocus(0);
    Notify(eNotify_FocusLost, old, 0);
    if (mFocusAnimeEnabled) mDelayAnime.push_back(old->mFocusOffAnimation);
    mFocusControl = 0;
  }
  if (control) {
    control->MarkFocus(1);
    if (mFocusAnimeEnabled) mDelayAnime.push_back(control->mFocusAnimation);
    mFocusControl = control;
    Notify(eNotify_FocusGained, control, 0);
  }
}

void YGUIGrid::FocusOnControlById(int id) {
  if (mFocusControl && mFocusControl->mId == id) return;
  if (id == -1) id = mDefaultFocusId;
  for (size_t i = 0; i < mFrames.size(); ++i) {
    YGUIControl* control = dynamic_cast<YGUIControl*>(mFrames[i]);
    if (control && control->mEnabled && control->mId == id) {
      RequestFocus(control);
      return;
    }
  }
}

void YGUIGrid::NotifyMsgIsHandled(YGUIControl& control) {
  if (!mHandledControl) mHandledControl = &control;
}

int YGUIGrid::DefaultDealMessage(const YGUIMessage&) {
  if (mLoseFocusOnMiss) RequestFocus(0);
  return 1;
}

int YGUIGrid::DealMessage(const YGUIMessage& message) {
  for (size_t i = 0; i < mFrames.size(); ++i) {
    if (mFrames[i]->DealMessage(message)) return 1;
  }
  if (mLoseFocusOnMiss) RequestFocus(0);
  return 1;
}

bool YGUIGrid::IsAnimeFinished() const {
  if (mAnimation && !mAnimation->IsAnimeFinished()) return false;
  for (size_t i = 0; i < mFrames.size(); ++i) {
    if (!mFrames[i]->IsAnimeFinished()) return false;
  }
  return true;
}

bool YGUIGrid::UpdateAnimation() {
  if (!IsAnimeFinished()) return false;
  Notify(eNotify_AnimeFinished, &mCurrentAnime, 0);
  mCurrentAnime.clear();
  return true;
}

void YGUIGrid::Update(float dt) {
  mHandledControl = 0;
  if (UpdateAnimation() && !mDelayAnime.empty()) {
    // Queued animations start one at a time, once all others have run out.
    const std::string next = mDelayAnime.front();
    mDelayAnime.pop_front();
    StartAnime(next);
  }
  if (mAnimation) {
    mAnimation->Update(dt);
    const YGUIAnimeFrame* frame = mAnimation->GetCurrentFrame();
    if (frame) {
      mScaleX = frame->mScaleX;
      mScaleY = frame->mScaleY;
    }
  }
  mDirtyRects.clear();
  // Gathered for this call alone: the whole layer is drawn again each frame, so
  // nothing consumes them.
  std::vector<Rect2D<int> > dirty;
  for (size_t i = 0; i < mFrames.size(); ++i) {
    mFrames[i]->Update(dt);
    if (mFrames[i]->mDirty) dirty.push_back(mFrames[i]->mDirtyRect);
  }
}

void YGUIGrid::Render(CanvasLayer& canvas, EOrientationStatus orient) {
  for (size_t i = 0; i < mFrames.size(); ++i) {
    if (mFrames[i]->mVisible) mFrames[i]->Render(canvas, orient);
  }
}
