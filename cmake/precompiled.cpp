// Nothing but the precompiled headers.
