/* Zem chapter g05.  Included by zem.h. */
