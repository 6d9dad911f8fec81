/* Zem chapter s15.  Included by zem.h. */
