/** @file
 * Every service of the host. */
#ifndef PLATFORM_PLATFORM_H
#define PLATFORM_PLATFORM_H

#include "platform/bounded.h"
#include "platform/cap.h"
#include "platform/dbg.h"
#include "platform/ddm.h"
#include "platform/dev.h"
#include "platform/kvt.h"
#include "platform/pub.h"
#include "platform/root.h"
#include "platform/rpc.h"
#include "platform/syn.h"
#include "platform/zel.h"

#endif
