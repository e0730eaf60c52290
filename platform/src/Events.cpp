// The device's event sources and the services that deliver them.
#include <algorithm>
#include <cstdio>
#include <deque>
#include <mutex>
#include <vector>

#include "CAccelerometerSvc.h"
#include "CButtonSvc.h"
#include "CEventSvc.h"
#include "CPowerSvc.h"
#include "CTouchMessage.h"
#include "CUSBDeviceMessage.h"
#include "CUSBDeviceSvc.h"
#include "CVideoSvc.h"
#include "DeviceReset.h"
#include "Events.h"
#include "solva/Capture.h"
#include "solva/Events.h"

namespace solva {
namespace detail {
namespace {

struct QueuedEvent {
  enum Kind { Buttons, Touch, Orientation, Power, Usb } kind;
  uint32_t mask;
  tTouchData touch;
  int value;
};

struct EventState {
  std::deque<QueuedEvent> queue;
  std::vector<const IEventListener*> eventListeners;
  std::vector<const IEventListener*> buttonListeners;
  std::vector<const IEventListener*> usbListeners;
  uint32_t buttonMask = 0;
  int orientation = 0;
  int powerState = kPowerNormal;
  bool accelerometerPresent = true;
  uint32_t accelerometerRate = 0;
  uint32_t accelerometerMode = 0;
  int failRegistration = 0;
  int unknownUnregistrations = 0;
};

// Events are queued by the host (and its window's thread) and delivered on the
// frame thread.
std::recursive_mutex gLock;
EventState& State() {
  static EventState state;
  return state;
}

void ResetEvents() {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  State() = EventState();
}
ResetHook gEventsReset(&ResetEvents);

void Queue(const QueuedEvent& event) {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  State().queue.push_back(event);
}

int NotifyAll(const std::vector<const IEventListener*>& listeners, const IEventMessage& msg) {
  int called = 0;
  for (const IEventListener* listener : listeners) {
    if (!listener->HandlesType(msg.GetEventType())) continue;
    const_cast<IEventListener*>(listener)->Notify(msg);
    ++called;
  }
  return called;
}

std::vector<const IEventListener*>& List(ListenerList which) {
  switch (which) {
    case ListenerList::Buttons: return State().buttonListeners;
    case ListenerList::Usb: return State().usbListeners;
    default: return State().eventListeners;
  }
}

}  // namespace

tErrType RegisterListener(ListenerList which, const IEventListener* listener) {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  if (listener == nullptr) return kInvalidParamErr;
  if (TakeRegistrationFailure()) return kRegistrationErr;
  std::vector<const IEventListener*>& list = List(which);
  if (std::find(list.begin(), list.end(), listener) == list.end()) list.push_back(listener);
  return kNoErr;
}

tErrType UnregisterListener(ListenerList which, const IEventListener* listener) {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  std::vector<const IEventListener*>& list = List(which);
  auto found = std::find(list.begin(), list.end(), listener);
  if (found == list.end()) {
    // A program that lets go of what it never held, or twice: worth a line.
    fprintf(stderr, "solva: events: a listener that is not registered with this service was unregistered\n");
    ++State().unknownUnregistrations;
    return kNotFoundErr;
  }
  list.erase(found);
  return kNoErr;
}

bool TakeRegistrationFailure() {
  std::lock_guard<std::recursive_mutex> lock(gLock);
  EventState& state = State();
  return state.failRegistration > 0 && --state.failRegistration == 0;
}

}  // namespace detail

using detail::QueuedEvent;

void QueueButtons(uint32_t mask) {
  QueuedEvent event{};
  event.kind = QueuedEvent::Buttons;
  event.mask = mask;
  detail::Queue(event);
}

void QueueTouch(bool down, int x, int y) {
  QueuedEvent event{};
  event.kind = QueuedEvent::Touch;
  event.touch.touchState = down ? 1 : 0;
  event.touch.x = S16(x);
  event.touch.y = S16(y);
  detail::Queue(event);
}

void QueueOrientation(int orientation) {
  QueuedEvent event{};
  event.kind = QueuedEvent::Orientation;
  event.value = orientation;
  detail::Queue(event);
}

void QueuePowerState(int state) {
  QueuedEvent event{};
  event.kind = QueuedEvent::Power;
  event.value = state;
  detail::Queue(event);
}

void QueueMicrophonePlugged(bool plugged) {
  QueuedEvent event{};
  event.kind = QueuedEvent::Usb;
  event.value = plugged ? 1 : 0;
  detail::Queue(event);
}

int RegisteredUsbListeners() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return int(detail::State().usbListeners.size());
}

int QueuedEventCount() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return int(detail::State().queue.size());
}

int DeliverEvents() {
  int called = 0;
  for (;;) {
    QueuedEvent event;
    std::vector<const IEventListener*> listeners;
    {
      std::lock_guard<std::recursive_mutex> lock(detail::gLock);
      detail::EventState& state = detail::State();
      if (state.queue.empty()) break;
      event = state.queue.front();
      state.queue.pop_front();
      // The level changes when the event is delivered, as the device's would.
      switch (event.kind) {
        case QueuedEvent::Buttons:
          event.value = int(state.buttonMask ^ event.mask);
          state.buttonMask = event.mask;
          listeners = state.buttonListeners;
          break;
        case QueuedEvent::Orientation:
          state.orientation = event.value;
          if (!state.accelerometerPresent) continue;
          listeners = state.eventListeners;
          break;
        case QueuedEvent::Power:
          state.powerState = event.value;
          listeners = state.eventListeners;
          break;
        case QueuedEvent::Touch:
          listeners = state.eventListeners;
          break;
        case QueuedEvent::Usb:
          listeners = state.usbListeners;
          break;
      }
    }
    // Listeners are called without the lock: they may register, queue or unregister.
    switch (event.kind) {
      case QueuedEvent::Buttons: {
        const tButtonData data = {event.mask, uint32_t(event.value)};
        called += detail::NotifyAll(listeners, CButtonMessage(data));
        break;
      }
      case QueuedEvent::Touch:
        called += detail::NotifyAll(listeners, CTouchMessage(event.touch));
        break;
      case QueuedEvent::Orientation:
        called += detail::NotifyAll(listeners, CAccelerometerMessage(kOrientationChanged, event.value));
        break;
      case QueuedEvent::Power:
        called += detail::NotifyAll(listeners, CPowerMessage(event.value));
        break;
      case QueuedEvent::Usb: {
        // The microphone is there or gone before anyone hears of it.
        SetMicrophonePresent(event.value != 0);
        const tUSBDeviceData data = {event.value ? kUSBDeviceConnected : kUSBDeviceDisconnected,
                                     event.value ? kUSBDeviceDriverAudio : kUSBDeviceDriverNone,
                                     event.value ? kUSBDeviceSupportsMicrophone : kUSBDeviceSupportsNone};
        called += detail::NotifyAll(listeners, CUSBDeviceMessage(data));
        break;
      }
    }
  }
  return called;
}

uint32_t ButtonMask() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return detail::State().buttonMask;
}

int Orientation() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return detail::State().orientation;
}

int PowerState() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return detail::State().powerState;
}

void SetAccelerometerPresent(bool present) {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  detail::State().accelerometerPresent = present;
}

bool AccelerometerPresent() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return detail::State().accelerometerPresent;
}

void FailRegistration(int nth) {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  detail::State().failRegistration = nth;
}

int RegisteredEventListeners() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return int(detail::State().eventListeners.size());
}

int RegisteredButtonListeners() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return int(detail::State().buttonListeners.size());
}

bool ListenerRegistered(const IEventListener* listener) {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  for (detail::ListenerList which : {detail::ListenerList::Events, detail::ListenerList::Buttons,
                                     detail::ListenerList::Usb}) {
    const std::vector<const IEventListener*>& list = detail::List(which);
    if (std::find(list.begin(), list.end(), listener) != list.end()) return true;
  }
  return false;
}

int UnknownUnregistrations() {
  std::lock_guard<std::recursive_mutex> lock(detail::gLock);
  return detail::State().unknownUnregistrations;
}

}  // namespace solva

namespace Vantrel {
namespace Solva {

using solva::detail::ListenerList;

CEventSvc::CEventSvc() = default;
CEventSvc::~CEventSvc() = default;

tErrType CEventSvc::RegisterEventListener(const IEventListener* listener, U32 /*priority*/) {
  return solva::detail::RegisterListener(ListenerList::Events, listener);
}

tErrType CEventSvc::UnregisterEventListener(const IEventListener* listener) {
  return solva::detail::UnregisterListener(ListenerList::Events, listener);
}

CButtonSvc::CButtonSvc() = default;
CButtonSvc::~CButtonSvc() = default;

tErrType CButtonSvc::RegisterEventListener(const IEventListener* listener) {
  return solva::detail::RegisterListener(ListenerList::Buttons, listener);
}

tErrType CButtonSvc::UnregisterEventListener(const IEventListener* listener) {
  return solva::detail::UnregisterListener(ListenerList::Buttons, listener);
}

tButtonData CButtonSvc::GetButtonState() const {
  const tButtonData data = {solva::ButtonMask(), 0};
  return data;
}

CPowerSvc::CPowerSvc() = default;
CPowerSvc::~CPowerSvc() = default;
int CPowerSvc::GetPowerState() const { return solva::PowerState(); }

CAccelerometerSvc::CAccelerometerSvc() = default;
CAccelerometerSvc::~CAccelerometerSvc() = default;
bool CAccelerometerSvc::IsAccelerometerPresent() const { return solva::AccelerometerPresent(); }
tOrientation CAccelerometerSvc::GetOrientation() const { return solva::Orientation(); }

tErrType CAccelerometerSvc::SetAccelerometerRate(U32 rate) {
  std::lock_guard<std::recursive_mutex> lock(solva::detail::gLock);
  solva::detail::State().accelerometerRate = rate;
  return kNoErr;
}

tErrType CAccelerometerSvc::SetAccelerometerMode(U32 mode) {
  std::lock_guard<std::recursive_mutex> lock(solva::detail::gLock);
  solva::detail::State().accelerometerMode = mode;
  return kNoErr;
}

U32 CAccelerometerSvc::GetAccelerometerRate() const {
  std::lock_guard<std::recursive_mutex> lock(solva::detail::gLock);
  return solva::detail::State().accelerometerRate;
}

U32 CAccelerometerSvc::GetAccelerometerMode() const {
  std::lock_guard<std::recursive_mutex> lock(solva::detail::gLock);
  return solva::detail::State().accelerometerMode;
}

CUSBDeviceSvc::CUSBDeviceSvc() = default;
CUSBDeviceSvc::~CUSBDeviceSvc() = default;

tErrType CUSBDeviceSvc::RegisterEventListener(const IEventListener* listener) {
  return solva::detail::RegisterListener(ListenerList::Usb, listener);
}

tErrType CUSBDeviceSvc::UnregisterEventListener(const IEventListener* listener) {
  return solva::detail::UnregisterListener(ListenerList::Usb, listener);
}

tUSBDeviceData CUSBDeviceSvc::GetUSBDeviceState() const {
  const bool present = solva::MicrophonePresent();
  const tUSBDeviceData data = {present ? kUSBDeviceConnected : kUSBDeviceDisconnected,
                               present ? kUSBDeviceDriverAudio : kUSBDeviceDriverNone,
                               present ? kUSBDeviceSupportsMicrophone : kUSBDeviceSupportsNone};
  return data;
}

CVideoSvc::CVideoSvc() = default;
CVideoSvc::~CVideoSvc() = default;

}  // namespace Solva
}  // namespace Vantrel
