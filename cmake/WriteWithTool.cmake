# SPDX-License-Identifier: MIT
# Writes FILE: what TOOL answers to ARGUMENTS.

execute_process(COMMAND ${TOOL} ${ARGUMENTS}
  OUTPUT_FILE ${FILE}.new
  COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${FILE}.new ${FILE})
