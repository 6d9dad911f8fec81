// Everything a chapter needs to add a routine to the frame.
#pragma once

#include <zem.h>

#include "engine.h"
#include "entry.h"
#include "errbuf.h"
#include "layers.h"
#include "messages.h"
