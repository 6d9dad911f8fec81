/* Zem chapter g01.  Included by zem.h. */
