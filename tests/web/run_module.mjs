// Runs the browser's build of the command under Node: node run_module.mjs BUILD ARGUMENTS, in a folder with the inputs.
// Files named by the arguments are put into the module's memory, and what the run makes is put beside them.
import {readFileSync} from 'node:fs';
