# Takes the paragraph marks out of scdoc's output that mark no paragraph:
# behind a heading, and before whatever begins or ends a block.
/^\.P$/ { waiting = !heading; next }
{
  if (waiting && !/^\.(RE|RS|SH|SS|P)/) {
    print ".P"
  }
  waiting = 0
  heading = /^\.(TH|SH|SS)/
  print
}
