// SPDX-License-Identifier: MIT
#include <swctl/frame.h>

// Zero at load, in the data every process gets for itself.
int32_t ONU_ERR_CODE;
uint32_t stateflag;
uint8_t g_tmpBuffer[SWCTL_TMP_BUFFER_SIZE];
uint8_t sntp_cfg[SWCTL_SNTP_CFG_SIZE];
