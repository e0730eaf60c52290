#pragma once
// Listener registries of the device's services.
#include "IEventListener.h"

namespace solva {
namespace detail {

enum class ListenerList { Events, Buttons, Usb };

tErrType RegisterListener(ListenerList which, const IEventListener* listener);
tErrType UnregisterListener(ListenerList which, const IEventListener* listener);
// Counts one registration against solva::FailRegistration; true when it must fail.
bool TakeRegistrationFailure();

}  // namespace detail
}  // namespace solva
