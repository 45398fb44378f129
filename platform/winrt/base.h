// A stand-in for C++/WinRT where its headers are not to be had: the same header names, the same names and the
// same semantics, cut down to what finding, pairing and unpairing devices needs. Sources that compile here
// compile unchanged against C++/WinRT itself, in a version that has multi_threaded_observable_vector.
#pragma once

#include "impl/activation.h"
#include "impl/com_ptr.h"
#include "impl/coroutine.h"
#include "impl/delegate.h"
#include "impl/error.h"
#include "impl/events.h"
#include "impl/guid.h"
#include "impl/hstring.h"
#include "impl/lock.h"
#include "impl/unknown.h"
#include "impl/weak_ref.h"
