#pragma once
// Device-control API: the outside world's events. Queued events reach the
// registered listeners only when DeliverEvents() is called, which the host does on
// the frame thread between two frames.
#include <cstdint>

class IEventListener;

namespace solva {

// Every button now down, as a mask of the device's button bits.
void QueueButtons(uint32_t mask);
void QueueTouch(bool down, int x, int y);
// The device turns: 0 to 3. The accelerometer reports it when it is present.
void QueueOrientation(int orientation);
void QueuePowerState(int state);

// Delivers every queued event in order; returns how many listeners were called.
int DeliverEvents();
int QueuedEventCount();

// The device's current levels, as the events so far have left them.
uint32_t ButtonMask();
int Orientation();
int PowerState();

void SetAccelerometerPresent(bool present);
bool AccelerometerPresent();

// The `nth` RegisterEventListener call from now (1: the next) fails, on any
// service; 0 makes them all succeed again.
void FailRegistration(int nth);
// How many listeners the event, button services have registered.
int RegisteredEventListeners();
int RegisteredButtonListeners();
// Whether `listener` is registered with any service now.
bool ListenerRegistered(const IEventListener* listener);
// How often a listener was unregistered from a service it was not registered
// with (each is also reported on standard error) since the device was reset.
int UnknownUnregistrations();

}  // namespace solva
