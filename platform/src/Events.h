#pragma once
// Listener registries of the device's services, shared with the services that live
// in other files (the USB service keeps its own).
#include "IEventListener.h"

namespace solva {
namespace detail {

enum class ListenerList { Events, Buttons };

tErrType RegisterListener(ListenerList which, const IEventListener* listener);
tErrType UnregisterListener(ListenerList which, const IEventListener* listener);
// Counts one registration against solva::FailRegistration; true when it must fail.
bool TakeRegistrationFailure();

}  // namespace detail
}  // namespace solva
