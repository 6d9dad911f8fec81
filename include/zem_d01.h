/* Zem chapter d01.  Included by zem.h. */
